#include "tools/stamps/StampPreview.h"

#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/style/Theme.h"
#include "tools/stamps/CheckeredPicture.h"

#include <QLineEdit>

namespace folvane {

namespace {

constexpr int pictureHeight = 240;
constexpr int picturePadding = 16;
constexpr int fieldHeight = 34;
constexpr int spacing = 16;

} // namespace

StampPreview::StampPreview(QWidget* parent)
    : QWidget(parent), m_picture(new CheckeredPicture(picturePadding, this)), m_name(new QLineEdit(this))
{
    m_picture->setFixedHeight(pictureHeight);
    m_picture->setAccessibleName(tr("Preview"));
    m_name->setPlaceholderText(tr("Name"));
    m_name->setAccessibleName(tr("Name"));
    m_name->setMinimumHeight(fieldHeight);
    auto* column = makeColumn(this, {}, spacing);
    column->addWidget(m_picture);
    column->addWidget(new TextLabel(tr("The checkerboard is what stays transparent on the page."),
                                    interfaceFont(12), theme::secondaryText, this));
    column->addWidget(m_name);
}

void StampPreview::showPicture(const QImage& picture, const QString& name)
{
    m_picture->setPicture(picture);
    m_name->setText(name);
    setVisible(true);
    m_name->selectAll();
    m_name->setFocus();
}

QString StampPreview::name() const
{
    return m_name->text();
}

} // namespace folvane
