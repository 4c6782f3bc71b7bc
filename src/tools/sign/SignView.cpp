#include "tools/sign/SignView.h"

#include "controls/divider.h"
#include "controls/layouts.h"
#include "platform/tasks/spawn.h"
#include "tools/sign/PageArea.h"
#include "tools/sign/PageStrip.h"
#include "tools/sign/SignBar.h"
#include "tools/stamps/StampLibraryPanel.h"

#include <algorithm>
#include <utility>

namespace folvane {

SignView::SignView(AppModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_bar(new SignBar(this)),
      m_strip(new PageStrip(model, this)),
      m_area(new PageArea(model, this)),
      m_panel(new StampLibraryPanel(model, this))
{
    auto* row = makeRow(nullptr, {}, 0);
    row->addWidget(m_strip);
    row->addWidget(makeDivider(Qt::Vertical, this));
    row->addWidget(m_area, 1);
    row->addWidget(makeDivider(Qt::Vertical, this));
    row->addWidget(m_panel);
    auto* column = makeColumn(this, {}, 0);
    column->addWidget(m_bar);
    column->addWidget(makeDivider(Qt::Horizontal, this));
    column->addLayout(row, 1);
    connectParts();
}

void SignView::connectParts()
{
    connect(m_bar, &SignBar::leaveRequested, this, &SignView::leave);
    connect(m_bar, &SignBar::saveRequested, this, [this] { spawn(m_model.saveAs(m_file)); });
    connect(m_bar, &SignBar::stepRequested, this, &SignView::go);
    connect(m_bar, &SignBar::keyboardFreed, this, &SignView::takeFocus);
    connect(m_strip, &PageStrip::chosen, this, &SignView::showPage);
    connect(m_area, &PageArea::selected, this, &SignView::select);
    connect(m_area, &PageArea::changed, this, &SignView::change);
    connect(m_area, &PageArea::removeRequested, this, &SignView::removeSelected);
    connect(m_area, &PageArea::stepRequested, this, &SignView::go);
    connect(m_panel, &StampLibraryPanel::placeRequested, this, &SignView::place);
    connect(m_panel, &StampLibraryPanel::rotateRequested, this, &SignView::rotate);
    connect(m_panel, &StampLibraryPanel::removeRequested, this, &SignView::removeSelected);
    connect(m_panel, &StampLibraryPanel::addToAllRequested, this, &SignView::addToAll);
}

void SignView::setFile(OpenFilePtr file)
{
    if (file == m_file)
        return;
    m_watches.clear();
    m_file = std::move(file);
    m_currentID = m_file ? m_model.signingStartPage.value() : std::nullopt;
    m_selectedPlacement.reset();
    if (m_file)
        m_watches.keep([this] { refresh(); }, m_file->pages);
    else
        refresh();
}

void SignView::takeFocus()
{
    m_area->takeFocus();
}

// Where the page has gone, the first one takes its place.
int SignView::currentIndex() const
{
    const std::vector<PageItem>& pages = m_file->pages.value();
    const auto found = std::ranges::find(pages, m_currentID, &PageItem::id);
    return found == pages.end() ? 0 : int(found - pages.begin());
}

const PageItem* SignView::current() const
{
    if (!m_file || m_file->pages.value().empty())
        return nullptr;
    return &m_file->pages.value()[size_t(currentIndex())];
}

const StampPlacement* SignView::selectedStamp() const
{
    const PageItem* page = current();
    if (!page)
        return nullptr;
    const auto found = std::ranges::find(page->stamps, m_selectedPlacement, &StampPlacement::id);
    return found == page->stamps.end() ? nullptr : &*found;
}

void SignView::refresh()
{
    const PageItem* page = current();
    const StampPlacement* selected = selectedStamp();
    m_strip->setPages(m_file ? m_file->pages.value() : std::vector<PageItem>());
    m_strip->setCurrentPage(page ? std::optional(page->id) : std::nullopt);
    m_area->setPage(page ? std::optional(*page) : std::nullopt, page ? currentIndex() + 1 : 0);
    m_area->setSelected(selected ? std::optional(selected->id) : std::nullopt);
    m_panel->setSelected(selected ? std::optional(*selected) : std::nullopt);
    if (page)
        m_bar->setPlace(currentIndex(), int(m_file->pages.value().size()));
}

void SignView::showPage(const QUuid& page)
{
    m_currentID = page;
    m_selectedPlacement.reset();
    refresh();
}

void SignView::go(int pages)
{
    const std::vector<PageItem>& all = m_file->pages.value();
    if (!all.empty())
        showPage(all[size_t(std::clamp(currentIndex() + pages, 0, int(all.size()) - 1))].id);
}

void SignView::select(const std::optional<QUuid>& placement)
{
    m_selectedPlacement = placement;
    refresh();
}

void SignView::place(const StampRecord& record)
{
    const PageItem* page = current();
    const auto placed = page ? m_model.place(record, m_file, page->id) : std::nullopt;
    if (!placed)
        return;
    select(placed->id);
    takeFocus();
}

void SignView::change(const StampPlacement& placement)
{
    if (const PageItem* page = current())
        m_model.update(placement, m_file, page->id);
}

void SignView::rotate(double degrees)
{
    const StampPlacement* selected = selectedStamp();
    if (!selected)
        return;
    StampPlacement turned = *selected;
    turned.rotation = degrees;
    change(turned);
}

void SignView::removeSelected()
{
    const PageItem* page = current();
    if (!page || !m_selectedPlacement)
        return;
    const QUuid placement = *std::exchange(m_selectedPlacement, std::nullopt);
    m_area->setSelected(std::nullopt); // the keyboard goes to the page before its stamp is gone
    m_model.remove(placement, m_file, page->id);
}

void SignView::addToAll()
{
    const PageItem* page = current();
    const StampPlacement* selected = selectedStamp();
    if (page && selected)
        m_model.addToAllPages(*selected, m_file, page->id);
}

void SignView::leave()
{
    m_model.signingFileID = std::nullopt;
}

} // namespace folvane
