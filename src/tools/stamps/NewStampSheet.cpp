#include "tools/stamps/NewStampSheet.h"

#include "controls/Spinner.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/sheets/NoteBanner.h"
#include "controls/style/Theme.h"
#include "tools/drawing/DrawingPad.h"
#include "tools/readyStamps/ReadyStampsPicker.h"
#include "tools/stamps/StampPreview.h"

#include <QPointer>

namespace folvane {

namespace {

constexpr int sheetWidth = 560;
constexpr int spacing = 16;
constexpr int lowestContent = 120;
constexpr int padHeight = 220;
constexpr int spinnerSide = 16;

} // namespace

NewStampSheet::NewStampSheet(AppModel& model, StampSource source, QWidget* parent)
    : SheetFrame(QString(), parent, sheetWidth), m_model(model), m_stage(new QWidget(this))
{
    layout()->setSpacing(spacing);
    setTitleLine(tr("New Signature or Stamp"));
    makeColumn(m_stage, {}, spacing);
    m_stage->setMinimumHeight(lowestContent);
    content().addWidget(m_stage);
    std::visit([this](const auto& from) { begin(from); }, source.from);
    addOutcomes();
    addButtons();
    m_watches.keep([this] { refresh(); }, m_making.isWorking, m_making.result, m_making.errorText);
    connect(this, &QDialog::finished, this, [this] { m_making.stop(); });
}

void NewStampSheet::begin(StampSource::Drawing)
{
    setTitleLine(tr("Draw Your Signature"));
    auto* pad = new DrawingPad({contentWidth(), padHeight}, m_stage);
    m_stage->layout()->addWidget(pad);
    connect(pad, &DrawingPad::used, this, [this, pad](const InkDrawing& drawing) {
        setTitleLine(tr("New Signature or Stamp"));
        pad->hide();
        m_making.start(drawing);
    });
}

void NewStampSheet::begin(StampSource::Ready)
{
    setTitleLine(tr("Ready Stamps"));
    auto* picker = new ReadyStampsPicker(m_model, contentWidth(), m_stage);
    m_stage->layout()->addWidget(picker);
    connect(picker, &ReadyStampsPicker::chosen, this, &NewStampSheet::finish);
}

void NewStampSheet::addOutcomes()
{
    m_preview = new StampPreview(m_stage);
    m_progress = makeProgress();
    m_progress->setMinimumHeight(m_preview->sizeHint().height()); // the preview changes nothing around it
    m_error = new NoteBanner(QString(), NoteBanner::Tone::Warning, m_stage);
    m_stage->layout()->addWidget(m_progress);
    m_stage->layout()->addWidget(m_preview);
    m_stage->layout()->addWidget(m_error);
    m_stage->layout()->setAlignment(m_error, Qt::AlignVCenter);
    m_preview->hide();
}

QWidget* NewStampSheet::makeProgress()
{
    auto* progress = new QWidget(m_stage);
    auto* row = makeRow(progress, {}, 10);
    row->addStretch();
    row->addWidget(new Spinner(spinnerSide, progress));
    row->addWidget(
        new TextLabel(tr("Removing the paper…"), interfaceFont(13), theme::secondaryText, progress));
    row->addStretch();
    return progress;
}

void NewStampSheet::addButtons()
{
    m_cancel = addButton(Button::Kind::Secondary, tr("Cancel"));
    m_save = addButton(Button::Kind::Primary, tr("Save"));
    m_save->setDefault(true);
    connect(m_cancel, &Button::clicked, this, &QDialog::reject);
    connect(m_save, &Button::clicked, this, &NewStampSheet::save);
}

void NewStampSheet::refresh()
{
    const std::optional<StampMaking::Result>& result = m_making.result.value();
    const std::optional<QString>& error = m_making.errorText.value();
    m_progress->setVisible(m_making.isWorking);
    m_error->setText(error.value_or(QString()));
    m_error->setVisible(error.has_value());
    m_save->setEnabled(result.has_value());
    if (result)
        m_preview->showPicture(result->preview, m_model.stamps.suggestedName(result->stamp));
    if (error)
        m_cancel->setFocus(); // there is nothing else to do
}

void NewStampSheet::save()
{
    if (const std::optional<StampRecord> record = m_making.save(m_preview->name()))
        finish(*record);
}

// Whoever hears of it may take the sheet away at once.
void NewStampSheet::finish(const StampRecord& record)
{
    const QPointer<NewStampSheet> self(this);
    emit saved(record);
    if (self)
        accept();
}

} // namespace folvane
