#include "shell/DocumentView.h"

#include "controls/appearance.h"
#include "controls/divider.h"
#include "controls/layouts.h"
#include "controls/paletteColors.h"
#include "controls/style/Theme.h"
#include "controls/style/icons.h"
#include "controls/style/mnemonics.h"
#include "controls/texts/ElidedLabel.h"
#include "platform/tasks/spawn.h"
#include "shell/DocumentBar.h"
#include "shell/pageGrid/PageGrid.h"

#include <QMenu>

#include <utility>

namespace folvane {

DocumentView::DocumentView(AppModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_bar(new DocumentBar(model, this)),
      m_grid(new PageGrid(model, this)),
      m_footer(makeFooter())
{
    auto* column = makeColumn(this, {}, 0);
    column->addWidget(m_bar);
    column->addWidget(makeDivider(Qt::Horizontal, this));
    column->addWidget(m_grid, 1);
    column->addWidget(makeDivider(Qt::Horizontal, this));
    column->addWidget(m_footer);
    connect(m_bar, &DocumentBar::keyboardFreed, this, &DocumentView::takeFocus);
    connect(m_grid, &PageGrid::opened, this,
            [this](const QUuid& page) { m_model.startSigning(*m_file, page); });
    connect(m_grid, &PageGrid::pageMenuRequested, this, &DocumentView::showPageMenu);
}

QWidget* DocumentView::makeFooter()
{
    auto* footer = new QWidget(this);
    setGround(*footer, theme::surface);
    auto* icon = new QLabel(footer);
    icon->setPixmap(themedIcon(Icon::Info, theme::secondaryText).pixmap(QSize(15, 15), devicePixelRatioF()));
    auto* hint = new ElidedLabel(footer);
    hint->setFont(interfaceFont(11.5));
    hint->setText(
        tr("Drag to reorder. Drop PDFs or images to add pages. Save As… makes a new file; the original stays "
           "as it is."));
    setTextColor(*hint, theme::secondaryText);
    auto* row = makeRow(footer, {24, 8, 24, 8}, 8);
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
    const QSet<QUuid> pages = file->groupOf(page);
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(tr("Rotate Left"), this, [this, file, pages] { m_model.turn(file, pages, false); });
    menu->addAction(tr("Rotate Right"), this, [this, file, pages] { m_model.turn(file, pages, true); });
    menu->addAction(literal(tr("Sign & Stamp")), this,
                    [this, file, page] { m_model.startSigning(*file, page); });
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
