#include "viewParts/BarTitle.h"

#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/paletteColors.h"
#include "controls/style/Theme.h"
#include "controls/texts/ElidedLabel.h"

namespace folvane {

BarTitle::BarTitle(QWidget* parent)
    : QWidget(parent), m_title(new ElidedLabel(this)), m_detail(new ElidedLabel(this))
{
    m_title->setFont(interfaceFont(16, Weight::SemiBold));
    m_detail->setFont(interfaceFont(12));
    setTextColor(*m_detail, theme::secondaryText);
    auto* lines = makeColumn(this, {}, 2);
    lines->addStretch();
    lines->addWidget(m_title);
    lines->addWidget(m_detail);
    lines->addStretch();
}

void BarTitle::setTitle(const QString& title)
{
    m_title->setText(title);
}

void BarTitle::setDetail(const QString& detail)
{
    m_detail->setText(detail);
}

} // namespace folvane
