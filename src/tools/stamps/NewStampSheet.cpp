#include "tools/stamps/NewStampSheet.h"

#include "controls/Spinner.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/sheets/NoteBanner.h"
#include "controls/style/Theme.h"
#include "tools/stamps/StampPreview.h"

#include <QPointer>

namespace folvane {

namespace {

constexpr int sheetWidth = 560;
constexpr int spacing = 16;
constexpr int lowestContent = 120;
constexpr int spinnerSide = 16;

} // namespace

NewStampSheet::NewStampSheet(AppModel& model, StampSource source, QWidget* parent)
    : SheetFrame(QString(), parent, sheetWidth), m_model(model)
{
    setTitleLine(tr("New Signature or Stamp"));
    addParts();
    addButtons();
    m_watches.keep([this] { refresh(); }, m_making.result, m_making.errorText);
    connect(this, &QDialog::finished, this, [this] { m_making.stop(); });
    std::visit([this](const auto& from) { begin(from); }, source.from);
}

void NewStampSheet::addParts()
{
    layout()->setSpacing(spacing);
    auto* stage = new QWidget(this);
    auto* parts = makeColumn(stage, {}, spacing);
    m_preview = new StampPreview(stage);
    m_progress = makeProgress();
    m_progress->setMinimumHeight(m_preview->sizeHint().height()); // the preview changes nothing around it
    m_error = new NoteBanner(QString(), NoteBanner::Tone::Warning, stage);
    parts->addWidget(m_progress);
    parts->addWidget(m_preview);
    parts->addWidget(m_error, 0, Qt::AlignVCenter);
    m_progress->hide();
    m_preview->hide();
    m_error->hide();
    stage->setMinimumHeight(lowestContent);
    content().addWidget(stage);
}

QWidget* NewStampSheet::makeProgress()
{
    auto* progress = new QWidget(this);
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
    Button* cancel = addButton(Button::Kind::Secondary, tr("Cancel"));
    m_save = addButton(Button::Kind::Primary, tr("Save"));
    m_save->setDefault(true);
    connect(cancel, &Button::clicked, this, &QDialog::reject);
    connect(m_save, &Button::clicked, this, &NewStampSheet::save);
    cancel->setFocus();
}

void NewStampSheet::work(const StampMaking::Picture& picture)
{
    m_progress->show();
    m_making.start(picture);
}

void NewStampSheet::refresh()
{
    const std::optional<StampMaking::Result>& result = m_making.result.value();
    const std::optional<QString>& error = m_making.errorText.value();
    m_save->setEnabled(result.has_value());
    if (!result && !error)
        return;
    m_progress->hide();
    m_error->setText(error.value_or(QString()));
    m_error->setVisible(error.has_value());
    if (result)
        m_preview->showPicture(result->preview, m_model.stamps.suggestedName(result->stamp));
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
