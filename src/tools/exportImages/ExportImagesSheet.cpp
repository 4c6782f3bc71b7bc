#include "tools/exportImages/ExportImagesSheet.h"

#include "controls/SegmentedPicker.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "platform/tasks/spawn.h"
#include "tools/exportImages/exporting.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace folvane {

namespace {

constexpr int sheetWidth = 490;
constexpr std::array resolutions{100, 200, 300}; // dpi, in the order of their titles

QString pagesOf(const OpenFile& file)
{
    const qsizetype selected = file.selection.value().size();
    return selected > 0 ? ExportImagesSheet::tr("The %1 selected pages.").arg(selected)
                        : ExportImagesSheet::tr("All %1 pages.").arg(file.pages.value().size());
}

} // namespace

ExportImagesSheet::ExportImagesSheet(AppModel& model, OpenFilePtr file, QWidget* parent)
    : ToolSheet(Icon::Pictures, tr("Export Pages as Images"), parent, sheetWidth),
      m_model(model),
      m_file(std::move(file)),
      m_format(new SegmentedPicker(tr("Format"), {tr("PNG"), tr("JPEG")}, this)),
      m_resolution(new SegmentedPicker(
          tr("Resolution"), {tr("Screen (100 dpi)"), tr("Good (200 dpi)"), tr("Print (300 dpi)")}, this))
{
    addText(pagesOf(*m_file));
    addChoice(m_format);
    addChoice(m_resolution);
    showSettings();
    connect(m_format, &SegmentedPicker::currentChanged, this, &ExportImagesSheet::keepSettings);
    connect(m_resolution, &SegmentedPicker::currentChanged, this, &ExportImagesSheet::keepSettings);

    Button* exports = addButtons(tr("Export…"));
    connect(exports, &Button::clicked, this, &ExportImagesSheet::exportPages);
    exports->setFocus();
}

void ExportImagesSheet::addChoice(QWidget* choice)
{
    auto* column = makeColumn(nullptr, {}, 6);
    column->addWidget(new TextLabel(choice->accessibleName(), interfaceFont(13), theme::text, this));
    column->addWidget(choice);
    content().addLayout(column);
}

void ExportImagesSheet::showSettings()
{
    const ExportSettings settings = ExportSettings::read(m_model.services().preferences);
    const auto* resolution = std::ranges::find(resolutions, settings.dpi);
    m_format->setCurrent(settings.jpeg ? 1 : 0);
    m_resolution->setCurrent(static_cast<int>(std::distance(resolutions.begin(), resolution)));
}

void ExportImagesSheet::keepSettings()
{
    const ExportSettings settings{.jpeg = m_format->current() == 1,
                                  .dpi = resolutions.at(static_cast<size_t>(m_resolution->current()))};
    settings.write(m_model.services().preferences);
}

void ExportImagesSheet::exportPages()
{
    accept();
    spawn(exportImages(m_model, *m_file, ExportSettings::read(m_model.services().preferences)));
}

} // namespace folvane
