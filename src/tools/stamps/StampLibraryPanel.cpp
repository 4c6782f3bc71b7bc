#include "tools/stamps/StampLibraryPanel.h"

#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/containers/PlainScrollArea.h"
#include "controls/layouts.h"
#include "controls/paletteColors.h"
#include "controls/style/Theme.h"
#include "controls/style/visualMargin.h"
#include "controls/texts/NoteLabel.h"
#include "tools/stamps/NewStampMenu.h"
#include "tools/stamps/SelectedStamp.h"
#include "tools/stamps/StampButton.h"
#include "tools/stamps/StampGrid.h"
#include "tools/stamps/openNewStampSheet.h"

namespace folvane {

namespace {

constexpr int panelWidth = 280;
constexpr int padding = 16;
constexpr int spacing = 12;
constexpr int narrowestTile = 110;
constexpr int tileSpacing = 10;
constexpr AdaptiveColumns columns{narrowestTile + 2 * StampButton::margin,
                                  tileSpacing - 2 * StampButton::margin};

} // namespace

StampLibraryPanel::StampLibraryPanel(AppModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_scroll(new PlainScrollArea(this)),
      m_selected(new SelectedStamp(model, this))
{
    setFixedWidth(panelWidth);
    setGround(*this, theme::surface);
    m_scroll->setPage(makeLibrary());
    auto* column = makeColumn(this, {}, 0);
    column->addWidget(m_scroll, 1);
    column->addWidget(m_selected);
    connect(m_selected, &SelectedStamp::removeRequested, this, &StampLibraryPanel::removeRequested);
    connect(m_selected, &SelectedStamp::addToAllRequested, this, &StampLibraryPanel::addToAllRequested);
    connect(m_selected, &SelectedStamp::rotateRequested, this, &StampLibraryPanel::rotateRequested);
}

QWidget* StampLibraryPanel::makeLibrary()
{
    auto* library = new QWidget(m_scroll);
    auto* title =
        new TextLabel(tr("Signatures & Stamps"), interfaceFont(14, Weight::SemiBold), theme::text, library);
    auto* empty =
        new NoteLabel(tr("Add your signature or a company seal once; it stays in Folvane on this Mac "
                         "for every document."),
                      12, library);
    m_grid =
        new StampGrid(m_model, columns, [this](const QUuid& stamp) { return makeButton(stamp); }, library);
    m_grid->setEmptyState(empty);
    setVisualMargin(*m_grid, QMargins() + StampButton::margin);
    connect(m_grid, &StampGrid::reached, this,
            [this](QWidget* button) { m_scroll->ensureWidgetVisible(button); });
    auto* menu = new NewStampMenu(m_model, library);
    connect(menu, &NewStampMenu::chosen, this, [this](const StampSource& source) {
        openNewStampSheet(m_model, source, *this,
                          [this](const StampRecord& made) { emit placeRequested(made); });
    });
    auto* column = makeColumn(library, QMargins() + padding, spacing);
    column->addWidget(title);
    column->addWidget(empty);
    column->addWidget(m_grid);
    column->addWidget(menu, 0, Qt::AlignLeft);
    column->addWidget(new NoteLabel(
        tr("Or take a photo with your iPhone: File › Import from iPhone or iPad."), 11.5, library));
    column->addStretch();
    return library;
}

QWidget* StampLibraryPanel::makeButton(const QUuid& stamp)
{
    auto* button = new StampButton(m_model, stamp);
    connect(button, &StampButton::clicked, this, [this, stamp] { place(stamp); });
    return button;
}

void StampLibraryPanel::place(const QUuid& stamp)
{
    if (const std::optional<StampRecord> record = m_model.stamps.record(stamp))
        emit placeRequested(*record);
}

void StampLibraryPanel::setSelected(const std::optional<StampPlacement>& placement)
{
    m_selected->setSelected(placement);
}

} // namespace folvane
