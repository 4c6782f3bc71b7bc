#include "tools/sign/PageArea.h"

#include "controls/Spinner.h"
#include "controls/paletteColors.h"
#include "controls/paper.h"
#include "controls/style/Theme.h"
#include "tools/sign/PlacedStamp.h"
#include "tools/sign/StampHandles.h"
#include "viewParts/stampsOn.h"

#include <QPainter>

#include <algorithm>

namespace folvane {

namespace {

constexpr int padding = 28;
constexpr int pictureSide = 2000; // pixels, the longer one
constexpr int spinnerSide = 28;

} // namespace

PageArea::PageArea(AppModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_pictures(model.thumbnails()),
      m_handles(new StampHandles(this)),
      m_spinner(new Spinner(spinnerSide, this))
{
    setGround(*this, theme::background);
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setMinimumSize(300, 300);
    connect(&m_pictures, &PagePictures::changed, this, &PageArea::showPage);
}

PageArea::~PageArea() = default;

void PageArea::setPage(const std::optional<PageItem>& page, int number)
{
    m_page = page;
    setAccessibleName(tr("Page %1").arg(number));
    wantPicture();
}

std::optional<PagePictures::Key> PageArea::key() const
{
    return m_page ? std::optional<PagePictures::Key>({m_page->source, m_page->turn, pictureSide})
                  : std::nullopt;
}

// What is not on screen needs no picture.
void PageArea::wantPicture()
{
    m_pictures.setRoom((room().size() * devicePixelRatioF()).toSize());
    m_pictures.want(m_page && isVisible() ? QList{*key()} : QList<PagePictures::Key>());
    showPage();
}

QRectF PageArea::room() const
{
    return QRectF(rect()).adjusted(padding, padding, -padding, -padding);
}

QRectF PageArea::pageRect() const
{
    const QPixmap* picture = m_page ? m_pictures.picture(*key()) : nullptr;
    return picture ? paperBox(room(), {.picture = picture}) : QRectF();
}

void PageArea::showPage()
{
    m_spinner->setVisible(m_page && m_pictures.state(*key()) == PagePictures::State::Waiting);
    m_spinner->move(rect().center() - m_spinner->rect().center());
    showStamps();
    update();
}

// Stamps are given to the widgets by their place in the list: a widget that has the keyboard keeps it while its stamp moves.
void PageArea::showStamps()
{
    const QRectF page = pageRect();
    const QList<StampPicture> stamps =
        page.isEmpty() ? QList<StampPicture>()
                       : stampsOn(*m_page, page.width() * devicePixelRatioF(), m_model.stampPictures);
    keepStamps(stamps.size());
    for (qsizetype i = 0; i < stamps.size(); ++i) {
        const std::optional<StampRecord> record = m_model.stamps.record(stamps[i].placement.stampID);
        m_stamps[i]->setStamp(stamps[i], page, record ? record->name : QString());
    }
    showHandles();
}

void PageArea::keepStamps(qsizetype count)
{
    while (m_stamps.size() > count)
        delete m_stamps.takeLast();
    while (m_stamps.size() < count)
        m_stamps.append(addStamp());
}

PlacedStamp* PageArea::addStamp()
{
    auto* stamp = new PlacedStamp(this);
    setTabOrder(m_stamps.isEmpty() ? this : static_cast<QWidget*>(m_stamps.last()), stamp);
    connect(stamp, &PlacedStamp::selected, this, [this, stamp] { emit selected(stamp->placement().id); });
    connect(stamp, &PlacedStamp::changed, this, &PageArea::changed);
    m_handles->raise();
    return stamp;
}

void PageArea::setSelected(const std::optional<QUuid>& placement)
{
    m_selected = placement;
    showHandles();
    if (!m_selected && focusWidget() && focusWidget() != this && isAncestorOf(focusWidget()))
        setFocus(); // or the stamp would be selected again when the window gets the keyboard back
}

void PageArea::showHandles()
{
    for (PlacedStamp* stamp : m_stamps)
        stamp->setSelected(m_selected == stamp->placement().id);
    const PlacedStamp* stamp = selectedStamp();
    const bool isSeen = stamp && stamp->hasPicture();
    m_handles->setFrame(isSeen ? std::optional(stamp->frame()) : std::nullopt, pageRect().topLeft());
}

PlacedStamp* PageArea::selectedStamp() const
{
    const auto found = std::ranges::find_if(m_stamps, &PlacedStamp::isSelected);
    return found == m_stamps.end() ? nullptr : *found;
}

void PageArea::takeFocus()
{
    PlacedStamp* stamp = selectedStamp();
    stamp ? stamp->setFocus() : setFocus();
}

void PageArea::resizeEvent(QResizeEvent*)
{
    wantPicture();
}

void PageArea::showEvent(QShowEvent*)
{
    wantPicture();
}

void PageArea::hideEvent(QHideEvent*)
{
    wantPicture();
}

void PageArea::paintEvent(QPaintEvent*)
{
    if (!m_page)
        return;
    const PaperPicture paper{.picture = m_pictures.picture(*key()),
                             .isBroken = m_pictures.state(*key()) == PagePictures::State::Failed};
    if (!paper.picture && !paper.isBroken)
        return; // the spinner stands there
    QPainter painter(this);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    drawPaper(painter, paperBox(room(), paper), paper);
}

} // namespace folvane
