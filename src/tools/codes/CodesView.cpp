#include "tools/codes/CodesView.h"

#include "controls/Button.h"
#include "controls/Spinner.h"
#include "controls/TextLabel.h"
#include "controls/accessibility.h"
#include "controls/appearance.h"
#include "controls/containers/LazyColumn.h"
#include "controls/dragging/FileDrops.h"
#include "controls/layouts.h"
#include "controls/sheets/NoteBanner.h"
#include "controls/style/Theme.h"
#include "controls/texts/NoteLabel.h"
#include "controls/texts/breakableText.h"
#include "platform/tasks/spawn.h"
#include "tools/codes/CodeCard.h"
#include "tools/codes/CodesDropZone.h"

#include <QShortcut>

#include <algorithm>

namespace folvane {

namespace {

constexpr LazyColumn::Measures measures{860, 28, 14, 190};
constexpr int headerSpacing = 18;
constexpr int spinnerSide = 16;

} // namespace

CodesView::CodesView(AppModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_drops(new FileDrops(*this)),
      m_cards(new LazyColumn(measures, [this](const QUuid& code) { return makeCard(code); }, this))
{
    makeColumn(this, {}, 0)->addWidget(m_cards);
    m_cards->setHeader(makeHeader());
    connect(m_drops, &FileDrops::underDragChanged, this,
            [this] { m_zone->setTargeted(m_drops->isUnderDrag()); });
    connect(m_drops, &FileDrops::dropped, this,
            [this](const QList<QUrl>& files) { spawn(m_model.readCodes(files)); });
    connect(new QShortcut(QKeySequence::Paste, this), &QShortcut::activated, this,
            [this] { spawn(m_model.readCodesFromClipboard()); });
    m_watches.keep([this] { showReading(); }, model.codes.isReading);
    m_watches.keep([this] { showEmptyMessage(); }, model.codes.emptyMessage);
    m_watches.keep([this] { showFound(); }, model.codes.found);
}

QWidget* CodesView::makeHeader()
{
    auto* header = new QWidget(this);
    m_zone = new CodesDropZone(m_model, header);
    m_progress = makeProgress(header);
    m_empty = new NoteBanner(QString(), NoteBanner::Tone::Info, header);
    m_foundRow = makeFoundRow(header);
    auto* words = makeColumn(nullptr, {}, 4);
    words->addWidget(new TextLabel(tr("QR Codes"), interfaceFont(24, Weight::Bold), theme::text, header));
    words->addWidget(new NoteLabel(tr("Read QR codes and barcodes from pictures, screenshots and every page "
                                      "of a PDF. Everything is read on this Mac."),
                                   13, header));
    auto* column = makeColumn(header, {}, headerSpacing);
    column->addLayout(words);
    for (QWidget* part :
         {static_cast<QWidget*>(m_zone), m_progress, static_cast<QWidget*>(m_empty), m_foundRow})
        column->addWidget(part);
    return header;
}

QWidget* CodesView::makeProgress(QWidget* parent)
{
    auto* progress = new QWidget(parent);
    auto* stop = new Button(Button::Kind::Tool, tr("Stop"), progress);
    connect(stop, &Button::clicked, this, [this] { m_model.codes.stop(); });
    auto* row = makeRow(progress, {}, 10);
    row->addWidget(new Spinner(spinnerSide, progress));
    row->addWidget(new TextLabel(tr("Reading…"), interfaceFont(13), theme::secondaryText, progress));
    row->addWidget(stop);
    row->addStretch();
    return progress;
}

QWidget* CodesView::makeFoundRow(QWidget* parent)
{
    auto* found = new QWidget(parent);
    auto* title = new TextLabel(tr("Found"), interfaceFont(16, Weight::SemiBold), theme::text, found);
    setSpokenRole(*title, QAccessible::Heading);
    title->setAccessibleName(title->text());
    found->setAccessibleName(title->text());
    auto* clear = new Button(Button::Kind::Tool, tr("Clear"), found);
    connect(clear, &Button::clicked, this, [this] {
        takeFocus();
        m_model.codes.clear();
    });
    auto* row = makeRow(found, {}, 10);
    row->addWidget(title, 1);
    row->addWidget(clear);
    return found;
}

QWidget* CodesView::makeCard(const QUuid& code)
{
    const QList<FoundCode>& found = m_model.codes.found.value();
    const auto shown = std::ranges::find(found, code, &FoundCode::id);
    Q_ASSERT(shown != found.end());
    return new CodeCard(m_model, *shown);
}

// What goes on stands at the top, and so does what it finds.
void CodesView::showReading()
{
    m_progress->setVisible(m_model.codes.isReading);
    if (m_model.codes.isReading)
        m_cards->scrollToTop();
}

void CodesView::showEmptyMessage()
{
    const std::optional<QString> message = m_model.codes.emptyMessage.value();
    m_empty->setVisible(message.has_value());
    if (!message)
        return;
    m_empty->setText(breakableText(*message) + u'\n' + tr("Try a sharper or larger picture."));
    announce(*m_empty);
}

void CodesView::showFound()
{
    QList<QUuid> codes;
    for (const FoundCode& code : m_model.codes.found.value())
        codes.append(code.id);
    const bool isMore = codes.size() > m_shown;
    m_shown = codes.size();
    m_cards->setItems(codes); // first: what the keyboard comes to may be scrolled to, and made
    m_foundRow->setVisible(!codes.isEmpty());
    if (isMore)
        announce(*m_foundRow);
}

void CodesView::takeFocus()
{
    m_zone->takeFocus();
}

} // namespace folvane
