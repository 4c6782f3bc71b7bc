#include "shell/DocumentView.h"

#include "controls/ElidedLabel.h"
#include "controls/appearance.h"
#include "controls/style/Theme.h"
#include "controls/style/icons.h"
#include "platform/tasks/spawn.h"
#include "shell/DocumentBar.h"
#include "shell/pageGrid/PageGrid.h"

#include <QHBoxLayout>
#include <QMenu>
#include <QVBoxLayout>

#include <utility>

namespace folvane {

namespace {

QWidget* filled(QWidget* widget, const QColor& color)
{
    QPalette colors = widget->palette();
    colors.setColor(QPalette::Window, color);
    widget->setPalette(colors);
    widget->setAutoFillBackground(true);
    return widget;
}

QWidget* makeDivider(QWidget* parent)
{
    QWidget* line = filled(new QWidget(parent), theme::hairline);
    line->setFixedHeight(1);
    return line;
}

} // namespace

DocumentView::DocumentView(AppModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_bar(new DocumentBar(model, this)),
      m_grid(new PageGrid(model, this)),
      m_footer(makeFooter())
{
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_bar);
    column->addWidget(makeDivider(this));
    column->addWidget(m_grid, 1);
    column->addWidget(makeDivider(this));
    column->addWidget(m_footer);
    connect(m_bar, &DocumentBar::keyboardFreed, this, &DocumentView::takeFocus);
    connect(m_grid, &PageGrid::pageMenuRequested, this, &DocumentView::showPageMenu);
}

QWidget* DocumentView::makeFooter()
{
    QWidget* footer = filled(new QWidget(this), theme::surface);
    auto* icon = new QLabel(footer);
    icon->setPixmap(themedIcon(Icon::Info, theme::secondaryText).pixmap(QSize(15, 15), devicePixelRatioF()));
    auto* hint = new ElidedLabel(footer);
    hint->setFont(interfaceFont(11.5));
    hint->setText(
        tr("Drag to reorder. Drop PDFs or images to add pages. Save As… makes a new file; the original stays "
           "as it is."));
    QPalette colors = hint->palette();
    colors.setColor(QPalette::WindowText, theme::secondaryText);
    hint->setPalette(colors);
    auto* row = new QHBoxLayout(footer);
    row->setContentsMargins(24, 8, 24, 8);
    row->setSpacing(8);
    row->addWidget(icon);
    row->addWidget(hint, 1);
    return footer;
}

void DocumentView::takeFocus()
{
    m_grid->setFocus();
}

void DocumentView::setFile(OpenFilePtr file)
{
    if (file == m_file)
        return;
    m_file = std::move(file);
    m_bar->setFile(m_file);
    m_grid->setFile(m_file);
}

void DocumentView::showPageMenu(const QUuid& page, const QPoint& position)
{
    const OpenFilePtr file = m_file;
    const QSet<QUuid> selected = file->selection.value();
    const QSet<QUuid> pages = selected.contains(page) ? selected : QSet<QUuid>{page};
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Rotate Left"), this, [this, file, pages] { m_model.turn(file, pages, false); });
    menu->addAction(tr("Rotate Right"), this, [this, file, pages] { m_model.turn(file, pages, true); });
    menu->addAction(tr("Extract…"), this,
                    [this, file, pages] {
                        file->selection = pages;
                        spawn(m_model.extract(file));
                    })
        ->setEnabled(!m_model.busy.value());
    menu->addSeparator();
    menu->addAction(tr("Delete"), this, [this, file, pages] { m_model.deletePages(file, pages); })
        ->setProperty("destructive", true);
    menu->popup(position);
}

} // namespace folvane
