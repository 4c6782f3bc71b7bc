#include "tools/compress/CompressSheet.h"

#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/choices/ChoiceRow.h"
#include "controls/layouts.h"
#include "controls/sheets/NoteBanner.h"
#include "controls/sliders/StepSlider.h"
#include "platform/tasks/spawn.h"
#include "platform/texts/localeTexts.h"

#include <QButtonGroup>

namespace folvane {

using Compression::Choice;
using Compression::limits;
using Compression::limitTitle;

namespace {

constexpr int sheetWidth = 510;
constexpr int iconSide = 16;

QStringList limitTitles()
{
    QStringList titles;
    for (const qint64 limit : limits)
        titles.append(limitTitle(limit));
    return titles;
}

TextLabel* makeWarning(const QColor& color, QWidget* parent)
{
    auto* label = new TextLabel(QString(), interfaceFont(12), color, parent);
    label->setWordWrap(true);
    return label;
}

// None: not known at the moment. Then a warning that showed leaves its room empty, so that the sheet does not jump.
void settle(QWidget& warning, std::optional<bool> shows)
{
    QSizePolicy policy = warning.sizePolicy();
    policy.setRetainSizeWhenHidden(!shows && (!warning.isHidden() || policy.retainSizeWhenHidden()));
    warning.setSizePolicy(policy);
    warning.setVisible(shows.value_or(false));
}

void settle(NoteBanner& banner, const std::optional<QString>& text)
{
    banner.setText(text.value_or(QString()));
    banner.setVisible(text.has_value());
}

} // namespace

CompressSheet::CompressSheet(AppModel& model, OpenFilePtr file, QWidget* parent)
    : ToolSheet(Icon::Compress, tr("Compress “%1”").arg(file->name), parent, sheetWidth),
      m_model(model),
      m_file(file),
      m_measuring(model, file),
      m_rows(new QButtonGroup(this))
{
    addText(tr("Sizes are measured on this Mac: the file you save is exactly this size."), 12.5);
    content().addLayout(makeRows());
    m_error = addBanner(true);
    m_note = addBanner(false);
    m_save = addButtons(tr("Save…"));
    connect(m_save, &Button::clicked, this, &CompressSheet::save);
    connect(m_rows, &QButtonGroup::idToggled, this, [this](int id, bool chosen) {
        if (chosen)
            m_measuring.choice = Choice(id);
    });
    connect(m_slider, &StepSlider::valueChanged, this,
            [this](int position) { m_measuring.limitIndex = position; });
    connect(this, &QDialog::finished, this, [this] { m_measuring.stop(); });
    m_watches.keep([this] { refresh(); }, m_measuring.choice, m_measuring.results, m_measuring.fit,
                   m_measuring.limitIndex, m_measuring.errorText);
    row(m_measuring.choice).setFocus();
    m_measuring.start();
}

QLayout* CompressSheet::makeRows()
{
    auto* rows = makeColumn(nullptr, {}, 8);
    addRow(*rows, Choice::Original, tr("Original"), tr("As it is now"));
    addRow(*rows, Choice::Medium, tr("Medium"), tr("Sharp text, fits most email"));
    addRow(*rows, Choice::Small, tr("Small"), tr("The smallest readable file"));
    addRow(*rows, Choice::UpTo, QString(), tr("For websites and forms with a size limit"));
    m_limit = makeLimit();
    rows->addWidget(m_limit);
    return rows;
}

void CompressSheet::addRow(QLayout& rows, Choice choice, const QString& title, const QString& detail)
{
    auto* row = new ChoiceRow(title, detail, this);
    m_rows->addButton(row, int(choice));
    rows.addWidget(row);
}

ChoiceRow& CompressSheet::row(Choice choice) const
{
    return *qobject_cast<ChoiceRow*>(m_rows->button(int(choice)));
}

QWidget* CompressSheet::makeLimit()
{
    auto* limit = new QWidget(this);
    auto* column = makeColumn(limit, {ChoiceRow::textLeft(), 0, 16, 0}, 8);
    m_pagesBecamePictures = makePicturesWarning(limit);
    m_notReached = makeWarning(theme::danger, limit);
    m_pagesBecamePictures->hide();
    m_notReached->hide();
    column->addLayout(makeSlider(limit));
    column->addWidget(m_pagesBecamePictures);
    column->addWidget(m_notReached);
    return limit;
}

QLayout* CompressSheet::makeSlider(QWidget* limit)
{
    m_slider = new StepSlider(tr("Limit"), limitTitles(), limit);
    const auto label = [limit](const QString& text, double pixels) {
        return new TextLabel(text, interfaceFont(pixels), theme::secondaryText, limit);
    };
    auto* line = makeRow(nullptr, {}, 8);
    line->addWidget(label(tr("Limit"), 12));
    line->addSpacing(4);
    line->addWidget(label(limitTitle(limits.front()), 11));
    line->addWidget(m_slider, 1);
    line->addWidget(label(limitTitle(limits.back()), 11));
    return line;
}

QWidget* CompressSheet::makePicturesWarning(QWidget* limit)
{
    auto* warning = new QWidget(limit);
    auto* icon = new QLabel(warning);
    icon->setPixmap(
        themedIcon(Icon::Photo, theme::text).pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
    auto* words = makeWarning(theme::text, warning);
    words->setText(tr("To fit, the pages became pictures: text in this copy can't be selected or searched. "
                      "The original keeps its text."));
    layOut(warning, icon, words);
    return warning;
}

NoteBanner* CompressSheet::addBanner(bool isError)
{
    auto* banner =
        new NoteBanner(QString(), isError ? NoteBanner::Tone::Danger : NoteBanner::Tone::Info, this);
    content().addWidget(banner);
    return banner;
}

void CompressSheet::refresh()
{
    row(m_measuring.choice).setChecked(true);
    refreshSizes();
    refreshLimit();
    refreshBanners();
    m_save->setEnabled(m_measuring.chosenData().has_value());
}

void CompressSheet::refreshSizes()
{
    const CompressMeasuring::Results& results = m_measuring.results.value();
    for (const Choice choice : {Choice::Original, Choice::Medium, Choice::Small}) {
        const auto result = results.find(choice);
        result == results.end() ? row(choice).setWaiting()
                                : row(choice).setValue(byteCount(result->second.size()));
    }
    const bool isChosen = m_measuring.choice == Choice::UpTo;
    const std::optional<Compression::Fit>& fit = m_measuring.fit.value();
    ChoiceRow& upTo = row(Choice::UpTo);
    upTo.setTitle(tr("Up to %1").arg(limitTitle(limits[size_t(m_measuring.limitIndex.value())])));
    isChosen && !fit ? upTo.setWaiting() : upTo.setValue(isChosen ? byteCount(fit->data.size()) : QString());
}

void CompressSheet::refreshLimit()
{
    const int limitIndex = m_measuring.limitIndex;
    const std::optional<Compression::Fit>& fit = m_measuring.fit.value();
    m_slider->setValue(limitIndex);
    settle(*m_pagesBecamePictures, fit ? std::optional(fit->pagesAsPictures) : std::nullopt);
    if (fit && !fit->reached)
        m_notReached->setText(tr("Can't get under %1. The smallest Folvane can make is %2.")
                                  .arg(limitTitle(limits[size_t(limitIndex)]), byteCount(fit->data.size())));
    settle(*m_notReached, fit ? std::optional(!fit->reached) : std::nullopt);
    m_limit->setVisible(m_measuring.choice == Choice::UpTo);
}

void CompressSheet::refreshBanners()
{
    settle(*m_error, m_measuring.errorText.value());
    settle(*m_note, m_measuring.mostlyTextNote());
}

// The model outlives the sheet, which whoever shows it may delete when it is done.
void CompressSheet::save()
{
    const std::optional<QByteArray> data = m_measuring.chosenData();
    if (!data)
        return;
    AppModel& model = m_model;
    const OpenFilePtr file = m_file;
    accept();
    spawn(model.save(*data, compressedName(*file, data->size()), file->url));
}

} // namespace folvane
