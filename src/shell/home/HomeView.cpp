#include "shell/home/HomeView.h"

#include "controls/BrandMark.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/dragging/DropZone.h"
#include "controls/layouts.h"
#include "controls/style/Theme.h"
#include "controls/texts/NoteLabel.h"
#include "platform/tasks/spawn.h"
#include "shell/home/TileGrid.h"
#include "shell/home/ToolTile.h"
#include "viewParts/choosingFiles.h"

#include <QHBoxLayout>

namespace folvane {

namespace {

constexpr int widestPage = 900;
constexpr int padding = 28;
constexpr int spacing = 22;
constexpr int logoSide = 56;

QCoro::Task<> choosePictures(AppModel& model)
{
    return chooseFilesAnd(model, [](AppModel& to, const QList<QUrl>& urls) { return to.open(urls); }, true,
                          {ContentType::Image});
}

/// Asks for one PDF and goes to the tool in it.
QCoro::Task<> openOne(AppModel& model, Tool tool)
{
    return chooseFilesAnd(
        model, [tool](AppModel& to, const QList<QUrl>& urls) { return to.open({urls.first()}, tool); }, false,
        {ContentType::Pdf});
}

} // namespace

HomeView::HomeView(AppModel& model, QWidget* parent) : PlainScrollArea(parent), m_model(model)
{
    setAlignment(Qt::AlignHCenter);
    setPage(makePage());
}

void HomeView::takeFocus()
{
    m_zone->setFocus();
}

// The page is as wide as it may be, in the middle of what there is.
QWidget* HomeView::makePage()
{
    auto* ground = new QWidget(this);
    auto* page = new QWidget(ground);
    page->setMaximumWidth(widestPage);
    auto* middle = new QHBoxLayout(ground);
    middle->setContentsMargins(0, 0, 0, 0);
    middle->addStretch(1);
    middle->addWidget(page, 1000);
    middle->addStretch(1);

    m_zone = new DropZone(page);
    auto* promise = new TextLabel(tr("No ads. No tracking. No account."), interfaceFont(12.5, Weight::Medium),
                                  theme::secondaryText, page);
    promise->setAlignment(Qt::AlignCenter);
    auto* column = makeColumn(page, {padding, padding, padding, padding}, spacing);
    column->addLayout(makeHeader(page));
    column->addWidget(m_zone);
    column->addWidget(makeTools(page));
    column->addWidget(promise);
    column->addStretch(1);
    connect(m_zone, &DropZone::clicked, this, [this] { spawn(m_model.chooseAndOpen()); });
    connect(m_zone, &DropZone::filesDropped, this,
            [this](const QList<QUrl>& files) { spawn(m_model.open(files)); });
    return ground;
}

QLayout* HomeView::makeHeader(QWidget* page) const
{
    auto* words = makeColumn(nullptr, {}, 2);
    words->addWidget(
        new TextLabel(tr("Folvane for Mac"), interfaceFont(26, Weight::Bold), theme::text, page));
    words->addWidget(new NoteLabel(
        tr("PDF tools, signatures and stamps, QR codes. Private by design · 100% on-device."), 13, page));
    auto* row = makeRow(nullptr, {}, 16);
    row->addWidget(new BrandMark(logoSide, page), 0, Qt::AlignVCenter);
    row->addLayout(words, 1);
    return row;
}

QWidget* HomeView::makeTools(QWidget* page)
{
    auto* tools = new TileGrid(page);
    auto* sign = new ToolTile(
        Icon::Gesture, tr("Sign & Stamp"),
        tr("Put your signature, initials or a company seal on any page, or on all of them."), tools);
    auto* compress =
        new ToolTile(Icon::Compress, tr("Compress"),
                     tr("Original, Medium, Small, or up to the size a website or email asks for."), tools);
    auto* merge =
        new ToolTile(Icon::Layers, tr("Merge PDFs"), tr("Join PDFs and images in the order you set."), tools);
    auto* split =
        new ToolTile(Icon::Scissors, tr("Split"),
                     tr("By page ranges like 1-3, 5, 8-10, every few pages or page by page."), tools);
    auto* codes = new ToolTile(Icon::ScanCode, tr("Read QR Codes"),
                               tr("From pictures, screenshots and every page of a PDF."), tools);
    auto* pictures = new ToolTile(Icon::Pictures, tr("Images to PDF"),
                                  tr("Photos and scans as pages of one PDF, in name order."), tools);
    for (ToolTile* tile : {sign, compress, merge, split, codes, pictures})
        tools->add(tile);
    connect(sign, &ToolTile::clicked, this, [this] { spawn(openOne(m_model, Tool::Sign)); });
    connect(compress, &ToolTile::clicked, this, [this] { spawn(openOne(m_model, Tool::Compress)); });
    connect(merge, &ToolTile::clicked, this,
            [this] { m_model.destination = Destination(Destination::Place::Merge); });
    connect(codes, &ToolTile::clicked, this,
            [this] { m_model.destination = Destination(Destination::Place::Codes); });
    connect(split, &ToolTile::clicked, this, [this] { spawn(openOne(m_model, Tool::Split)); });
    connect(pictures, &ToolTile::clicked, this, [this] { spawn(choosePictures(m_model)); });
    return tools;
}

} // namespace folvane
