#include "tools/split/SplitSheet.h"

#include "controls/SegmentedPicker.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "platform/tasks/spawn.h"
#include "tools/split/splitting.h"

#include <QLineEdit>
#include <QSpinBox>
#include <QStackedWidget>

#include <algorithm>

namespace folvane {

namespace {

constexpr int sheetWidth = 480;
constexpr int summaryIconSide = 18;

QLabel* makeText(double pixels, const QColor& color, QWidget* parent)
{
    auto* label = new TextLabel(QString(), interfaceFont(pixels), color, parent);
    label->setWordWrap(true);
    return label;
}

/// The parts below each other, at the top of a page.
QWidget* makePage(const QList<QWidget*>& parts, int above = 0)
{
    auto* page = new QWidget;
    auto* column = makeColumn(page, {0, above, 0, 0}, 8);
    for (QWidget* part : parts)
        column->addWidget(part);
    column->addStretch();
    return page;
}

} // namespace

SplitSheet::SplitSheet(AppModel& model, OpenFilePtr file, QWidget* parent)
    : ToolSheet(Icon::Scissors, tr("Split “%1”").arg(file->name), parent, sheetWidth),
      m_model(model),
      m_file(std::move(file)),
      m_mode(new SegmentedPicker(tr("Split"),
                                 {tr("By page ranges"), tr("Every few pages"), tr("Page by page")}, this)),
      m_modes(new QStackedWidget(this))
{
    m_modes->addWidget(makeRanges());
    m_modes->addWidget(makeEvery());
    m_modes->addWidget(makeEach());
    content().addWidget(m_mode);
    content().addWidget(m_modes);
    content().addWidget(makeSummary());
    m_split = addButtons(tr("Split…"));
    if (!m_file->selection.value().isEmpty())
        m_ranges->setText(PageRanges::describe(m_file->selectedPositions()));

    connect(m_mode, &SegmentedPicker::currentChanged, this, &SplitSheet::showMode);
    connect(m_ranges, &QLineEdit::textChanged, this, &SplitSheet::refresh);
    connect(m_every, &QSpinBox::valueChanged, this, &SplitSheet::refresh);
    connect(m_split, &Button::clicked, this, &SplitSheet::splitFile);
    m_watches.keep([this] { refresh(); }, m_file->pages);
    m_ranges->setFocus();
}

QWidget* SplitSheet::makeRanges()
{
    m_ranges = new QLineEdit(m_modes);
    m_ranges->setFont(interfaceFont(14));
    m_ranges->setPlaceholderText(tr("For example: 1-3, 5, 8-10"));
    m_ranges->setAccessibleName(tr("By page ranges"));
    m_ranges->setMinimumHeight(34);
    m_rangesHint = makeText(12, theme::secondaryText, m_modes);
    return makePage({m_ranges, m_rangesHint});
}

QWidget* SplitSheet::makeEvery()
{
    auto* line = new QWidget(m_modes);
    m_everyText = makeText(14, theme::text, line);
    m_every = new QSpinBox(line);
    m_every->setRange(1, std::max(pageCount(), 1));
    m_every->setValue(SplitChoice().every);
    m_every->setMinimumSize(96, 34);
    auto* row = makeRow(line, {}, 12);
    row->addWidget(m_everyText, 1);
    row->addWidget(m_every);
    return makePage({line});
}

QWidget* SplitSheet::makeEach()
{
    m_eachText = makeText(14, theme::text, m_modes);
    return makePage({m_eachText}, 8);
}

// It keeps its place while there is nothing to say, so that the sheet does not jump at each letter.
QWidget* SplitSheet::makeSummary()
{
    m_summary = new QWidget(this);
    QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
    policy.setRetainSizeWhenHidden(true);
    policy.setHeightForWidth(true);
    m_summary->setSizePolicy(policy);
    m_summaryIcon = new QLabel(m_summary);
    m_summaryIcon->setFixedSize(summaryIconSide, summaryIconSide);
    m_summaryText = makeText(13, theme::text, m_summary);
    m_summaryText->setMinimumHeight(summaryIconSide);
    layOut(m_summary, m_summaryIcon, m_summaryText);
    return m_summary;
}

SplitChoice SplitSheet::choice() const
{
    return {static_cast<SplitChoice::Mode>(m_mode->current()), m_ranges->text(), m_every->value()};
}

void SplitSheet::showMode()
{
    m_modes->setCurrentIndex(m_mode->current());
    refresh();
}

void SplitSheet::refresh()
{
    const int count = pageCount();
    m_rangesHint->setText(tr("Each range becomes its own PDF. Pages 1 to %1.").arg(count));
    m_every->setMaximum(std::max(count, 1));
    m_everyText->setText(tr("A new file every %1 pages").arg(m_every->value()));
    m_every->setAccessibleName(m_everyText->text());
    m_eachText->setText(tr("Each of the %1 pages becomes its own PDF.").arg(count));
    const SplitSummary said = summary(choice(), count);
    showSummary(said);
    m_split->setEnabled(said.kind == SplitSummary::Kind::Files);
}

void SplitSheet::showSummary(const SplitSummary& summary)
{
    const bool makesFiles = summary.kind == SplitSummary::Kind::Files;
    const QIcon icon =
        themedIcon(makesFiles ? Icon::Copies : Icon::Error, makesFiles ? theme::accent : theme::danger);
    m_summaryIcon->setPixmap(icon.pixmap(m_summaryIcon->size(), devicePixelRatioF()));
    m_summaryText->setFont(interfaceFont(13, makesFiles ? Weight::Medium : Weight::Regular));
    m_summaryText->setText(summary.text);
    m_summary->setVisible(summary.kind != SplitSummary::Kind::Nothing);
}

void SplitSheet::splitFile()
{
    const SplitChoice chosen = choice();
    accept();
    spawn(split(m_model, *m_file, chosen));
}

} // namespace folvane
