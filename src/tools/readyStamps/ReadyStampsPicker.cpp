#include "tools/readyStamps/ReadyStampsPicker.h"

#include "controls/Button.h"
#include "controls/choices/CheckBox.h"
#include "controls/containers/AdaptiveGrid.h"
#include "controls/layouts.h"
#include "platform/tasks/background.h"
#include "platform/tasks/spawn.h"
#include "stamps/ReadyStampRenderer.h"
#include "stamps/storedPicture.h"
#include "tools/drawing/inkPicker.h"
#include "tools/readyStamps/ReadyStampTile.h"

#include <QLineEdit>

#include <algorithm>

namespace folvane {

using ReadyStampRenderer::stampID;
using ReadyStampRenderer::today;

namespace {

constexpr int spacing = 16;
constexpr AdaptiveColumns columns{150, 10};
constexpr int fieldHeight = 34;

/// As large as fits into `room` pixels; null when it cannot be drawn.
QImage previewOf(const ReadyStampText& text, StampInk ink, QSize room)
{
    const std::optional<StampMaker::Stamp> stamp = ReadyStampRenderer::render(text.word, text.date, ink);
    const QImage picture = stamp ? storedPicture(stamp->png) : QImage();
    return picture.isNull() ? picture : picture.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

} // namespace

ReadyStampsPicker::ReadyStampsPicker(AppModel& model, int width, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_width(width),
      m_settings(ReadyStampSettings::read(model.services().preferences))
{
    auto* column = makeColumn(this, {}, spacing);
    column->addLayout(makeSettings());
    column->addLayout(makeTiles());
    column->addLayout(makeOwnWord());
    refresh();
}

ReadyStampsPicker::~ReadyStampsPicker()
{
    m_previewing.request_stop();
    m_choosing.request_stop();
}

QLayout* ReadyStampsPicker::makeSettings()
{
    m_ink = makeInkPicker(tr("Color"), m_settings.ink, this);
    m_addDate = new CheckBox(tr("Add today's date"), this);
    m_addDate->setChecked(m_settings.addDate);
    connect(m_ink, &SegmentedPicker::currentChanged, this, &ReadyStampsPicker::keepSettings);
    connect(m_addDate, &CheckBox::toggled, this, &ReadyStampsPicker::keepSettings);
    auto* row = makeRow(nullptr, {}, spacing);
    row->addWidget(m_ink);
    row->addStretch();
    row->addWidget(m_addDate);
    return row;
}

QLayout* ReadyStampsPicker::makeTiles()
{
    auto* grid = new AdaptiveGrid(columns);
    for (const ReadyStamp stamp : readyStamps) {
        auto* tile = new ReadyStampTile(this);
        grid->addWidget(tile);
        m_tiles[stamp] = tile;
        connect(tile, &ReadyStampTile::clicked, this, [this, stamp] { choose(textOf(stamp)); });
    }
    return grid;
}

QLayout* ReadyStampsPicker::makeOwnWord()
{
    m_ownWord = new QLineEdit(this);
    m_ownWord->setPlaceholderText(tr("Your own word, like PAID IN CASH"));
    m_ownWord->setAccessibleName(m_ownWord->placeholderText());
    m_ownWord->setMinimumHeight(fieldHeight);
    auto* add = new Button(Button::Kind::Tool, tr("Add"), this);
    connect(m_ownWord, &QLineEdit::returnPressed, this, &ReadyStampsPicker::addOwnWord);
    connect(add, &Button::clicked, this, &ReadyStampsPicker::addOwnWord);
    auto* row = makeRow(nullptr, {}, 10);
    row->addWidget(m_ownWord, 1);
    row->addWidget(add);
    return row;
}

QString ReadyStampsPicker::dateBelowWords() const
{
    return m_settings.addDate ? today() : QString();
}

ReadyStampText ReadyStampsPicker::textOf(ReadyStamp stamp) const
{
    return {wordOf(stamp), stamp == ReadyStamp::Date ? today() : dateBelowWords()};
}

QUuid ReadyStampsPicker::identity(ReadyStamp stamp) const
{
    const ReadyStampText text = textOf(stamp);
    return stampID(text.word, text.date, m_settings.ink);
}

bool ReadyStampsPicker::isComplete() const
{
    return std::ranges::all_of(readyStamps,
                               [this](ReadyStamp stamp) { return m_previews.contains(identity(stamp)); });
}

void ReadyStampsPicker::keepSettings()
{
    m_settings = {.ink = inkOf(*m_ink), .addDate = m_addDate->isChecked()};
    m_settings.write(m_model.services().preferences);
    refresh();
}

void ReadyStampsPicker::refresh()
{
    m_previewing.request_stop(); // what is not wanted any more is in the way
    m_previewing = std::stop_source();
    QList<ReadyStampText> texts;
    for (const auto& [stamp, tile] : m_tiles) {
        const ReadyStampText text = textOf(stamp);
        tile->setText(readyStampName(text.word, text.date));
        texts.append(text);
    }
    showPreviews();
    spawn(addPreviews(texts, m_settings.ink, m_previewing.get_token()));
}

// Until its new picture is there, a tile shows the old one.
void ReadyStampsPicker::showPreviews()
{
    for (const auto& [stamp, tile] : m_tiles) {
        const auto preview = m_previews.constFind(identity(stamp));
        if (preview != m_previews.cend())
            tile->setPicture(*preview);
    }
}

// One after the other, which leaves the other cores to whoever moves on.
QCoro::Task<> ReadyStampsPicker::addPreviews(QList<ReadyStampText> texts, StampInk ink, std::stop_token stop)
{
    const double scale = devicePixelRatioF();
    const QSize room = ReadyStampTile::room(columns.columnWidth(m_width)) * scale;
    for (const ReadyStampText& text : texts) {
        const QUuid id = stampID(text.word, text.date, ink);
        if (m_previews.contains(id))
            continue;
        auto draw = [text, ink, room] { return previewOf(text, ink, room); };
        QCoro::Task<QImage> drawing = inBackground(std::move(draw), stop);
        QImage preview = co_await drawing;
        throwIfStopped(stop);
        preview.setDevicePixelRatio(scale);
        m_previews.insert(id, QPixmap::fromImage(std::move(preview)));
        showPreviews();
    }
}

void ReadyStampsPicker::addOwnWord()
{
    const QString word = customWord(m_ownWord->text());
    if (!word.isEmpty())
        choose({word, dateBelowWords()});
}

void ReadyStampsPicker::choose(const ReadyStampText& text)
{
    m_choosing.request_stop(); // a second click is no second choice
    m_choosing = std::stop_source();
    spawn(tellChoice(text, m_choosing.get_token()));
}

QCoro::Task<> ReadyStampsPicker::tellChoice(ReadyStampText text, std::stop_token stop)
{
    QCoro::Task<std::optional<StampRecord>> making =
        readyStampRecord(m_model.stamps, text, m_settings.ink, stop);
    const std::optional<StampRecord> record = co_await making;
    if (record && !stop.stop_requested())
        emit chosen(*record);
}

} // namespace folvane
