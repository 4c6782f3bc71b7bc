#include "tools/support/SupportView.h"

#include "config.h"
#include "controls/SegmentedPicker.h"
#include "controls/TextLabel.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/style/Theme.h"
#include "controls/style/mnemonics.h"
#include "controls/texts/NoteLabel.h"
#include "controls/texts/SelectableText.h"
#include "tools/support/QRImage.h"

#include <QClipboard>
#include <QGuiApplication>

namespace folvane {

namespace {

constexpr int sheetWidth = 560;
constexpr int spacing = 14;
constexpr int codeSide = 168;

QTextCharFormat addressFormat()
{
    QTextCharFormat format;
    format.setFont(monospacedFont(12));
    format.setForeground(theme::text);
    return format;
}

} // namespace

SupportView::SupportView(bool afterResult, QWidget* parent)
    : SheetFrame(afterResult ? tr("Done! Support Folvane?") : tr("Support Folvane"), parent, sheetWidth)
{
    setIcon(Icon::Heart);
    content().setSpacing(spacing);
    content().addWidget(new NoteLabel(tr("Folvane is free: no ads, no tracking, no subscription. If it saved "
                                         "you time, you can thank the developer with crypto. Any amount "
                                         "helps keep it free."),
                                      13, this));
    addPicker();
    addDetails();
    content().addWidget(new NoteLabel(
        tr("Send only on the networks listed above. Coins sent on another network can't be recovered."), 12,
        this));
    addFooter(afterResult);
    showNetwork(m_network);
}

void SupportView::addPicker()
{
    QStringList titles;
    for (const DonationNetwork& network : DonationNetwork::all())
        titles.append(literal(network.title));
    auto* picker = new SegmentedPicker(tr("Network"), titles, this);
    connect(picker, &SegmentedPicker::currentChanged, this,
            [this](int index) { showNetwork(DonationNetwork::all()[index]); });
    content().addWidget(picker);
}

void SupportView::addDetails()
{
    m_picture = new QLabel(this);
    m_picture->setFixedSize(codeSide, codeSide);
    m_coins = new TextLabel(QString(), interfaceFont(13, Weight::Medium), theme::text, this);
    m_networks = new TextLabel(QString(), interfaceFont(13, Weight::Medium), theme::text, this);
    m_address = new SelectableText(Qt::LeftToRight, this);
    m_address->setAccessibleName(tr("Address"));
    m_copy = new Button(Button::Kind::Secondary, QString(), this);
    connect(m_copy, &Button::clicked, this, &SupportView::copyAddress);
    auto* rows = makeColumn(nullptr, {}, 10);
    rows->addWidget(makeField(tr("Send"), m_coins));
    rows->addWidget(makeField(tr("Network"), m_networks));
    rows->addWidget(makeField(tr("Address"), m_address));
    rows->addWidget(m_copy, 0, Qt::AlignLeft);
    rows->addStretch();
    auto* details = makeRow(nullptr, {}, 20);
    details->addWidget(m_picture, 0, Qt::AlignTop);
    details->addLayout(rows, 1);
    content().addLayout(details);
}

QWidget* SupportView::makeField(const QString& title, QWidget* value)
{
    auto* row = new QWidget(this);
    auto* column = makeColumn(row, {}, 2);
    column->addWidget(new TextLabel(title, interfaceFont(11.5, Weight::SemiBold), theme::secondaryText, row));
    column->addWidget(value);
    return row;
}

void SupportView::addFooter(bool afterResult)
{
    const QString words = tr("The same addresses are on %1/donate.").arg(config::hostName);
    buttonRow().insertWidget(0, new TextLabel(words, interfaceFont(12), theme::secondaryText, this));
    auto* close = addButton(Button::Kind::Secondary, afterResult ? tr("Not Now") : tr("Done"));
    connect(close, &Button::clicked, this, &QDialog::reject);
    close->setFocus();
}

void SupportView::showNetwork(const DonationNetwork& network)
{
    m_network = network;
    const double scale = devicePixelRatioF();
    QImage code = QRImage::image(network.address, qRound(codeSide * scale));
    code.setDevicePixelRatio(scale);
    m_picture->setPixmap(QPixmap::fromImage(code));
    m_picture->setAccessibleName(tr("QR code of the %1 address").arg(network.title));
    m_coins->setText(network.coins);
    m_networks->setText(network.networks);
    m_address->clear();
    m_address->append(displayed(network.address), addressFormat(), network.address);
    showCopied(false);
}

void SupportView::copyAddress()
{
    QGuiApplication::clipboard()->setText(m_network.address);
    showCopied(true);
}

void SupportView::showCopied(bool copied)
{
    m_copy->setText(copied ? tr("Copied") : tr("Copy Address"));
    m_copy->setSymbol(copied ? Icon::Check : Icon::Copies);
}

} // namespace folvane
