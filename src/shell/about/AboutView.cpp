#include "shell/about/AboutView.h"

#include "config.h"
#include "controls/BrandMark.h"
#include "controls/Button.h"
#include "controls/appearance.h"
#include "controls/containers/Panel.h"
#include "controls/layouts.h"
#include "controls/style/Theme.h"
#include "controls/texts/NoteLabel.h"
#include "shell/about/LinksPanel.h"
#include "shell/about/UpdatePanel.h"
#include "shell/about/aboutPanel.h"
#include "tools/support/TellAFriendView.h"
#include "viewParts/openLink.h"

namespace folvane {

namespace {

constexpr int widestPage = 640;
constexpr int padding = 28;
constexpr int spacing = 16;
constexpr int logoSide = 56;

} // namespace

AboutView::AboutView(AppModel& model, QWidget* parent) : PlainScrollArea(parent), m_model(model)
{
    setPage(makePage());
}

QWidget* AboutView::makePage()
{
    auto* ground = new QWidget(this);
    auto* page = new QWidget(ground);
    page->setMaximumWidth(widestPage);
    auto* middle = makeRow(ground, {}, 0);
    middle->addStretch(1);
    middle->addWidget(page, 1000);
    middle->addStretch(1);
    m_updates = new UpdatePanel(m_model, page);
    auto* column = makeColumn(page, QMargins() + padding, spacing);
    column->addWidget(makeHead(page));
    column->addWidget(m_updates);
    column->addWidget(makeSupport(page));
    column->addWidget(makeFriend(page));
    addLinks(*column, page);
    column->addStretch();
    return ground;
}

QWidget* AboutView::makeHead(QWidget* page) const
{
    auto* panel = new folvane::Panel(aboutPanelPadding, page);
    const QString version =
        tr("Version %1 (%2) · by Merrowlight Apps").arg(config::version).arg(config::buildNumber);
    auto* words = makeColumn(nullptr, {}, 2);
    words->addWidget(
        new TextLabel(tr("Folvane for Mac"), interfaceFont(22, Weight::Bold), theme::text, panel));
    words->addWidget(new NoteLabel(version, 13, panel));
    auto* row = makeRow(nullptr, {}, 16);
    row->addWidget(new BrandMark(logoSide, panel), 0, Qt::AlignVCenter);
    row->addLayout(words, 1);
    panel->content().addLayout(row);
    return panel;
}

QWidget* AboutView::makeSupport(QWidget* page)
{
    auto* button = new Button(Button::Kind::Secondary, tr("Support"), page);
    button->setSymbol(Icon::Heart);
    connect(button, &Button::clicked, this, [this] { m_model.support = SupportPrompt::Manual; });
    return makeAboutPanel(tr("Free, with optional support"),
                          tr("No ads, no tracking, no account, no subscription. Everything runs on your Mac. "
                             "If Folvane helps, you "
                             "can support the developer with crypto."),
                          button, page);
}

QWidget* AboutView::makeFriend(QWidget* page)
{
    auto* button = new Button(Button::Kind::Secondary, tr("Share"), page);
    button->setSymbol(Icon::Share);
    connect(button, &Button::clicked, this,
            [this] { openLink(m_model, TellAFriendView::mail(m_model.updates.productPage())); });
    return makeAboutPanel(tr("Tell a friend"),
                          tr("Folvane spends nothing on ads, so people telling people is how it grows. Share "
                             "a link to its page; "
                             "nothing is sent unless you choose where."),
                          button, page);
}

void AboutView::addLinks(QVBoxLayout& column, QWidget* page)
{
    const QString site = QStringLiteral("https://") + config::hostName.toString();
    const QUrl mail(QStringLiteral("mailto:%1?subject=%2")
                        .arg(config::supportAddress,
                             QString::fromLatin1(QUrl::toPercentEncoding(tr("Folvane for Mac")))));
    const auto url = [](QStringView constant) { return QUrl(constant.toString()); };
    column.addWidget(new LinksPanel(
        m_model, tr("Help & legal"),
        {{Icon::Envelope, tr("Write to Support"), mail},
         {Icon::Shield, tr("Privacy Policy"), m_model.updates.productPage().resolved(QUrl("privacy/"))},
         {Icon::TextDocument, tr("Terms of Use"), QUrl(site + "/terms/")}},
        page));
    column.addWidget(new LinksPanel(m_model, tr("Follow us"),
                                    {{Icon::Film, QStringLiteral("YouTube"), url(config::youTubeUrl)},
                                     {Icon::Music, QStringLiteral("TikTok"), url(config::tikTokUrl)},
                                     {Icon::Send, QStringLiteral("Telegram"), url(config::telegramUrl)},
                                     //: Link to the developer's account on X
                                     {Icon::At, tr("X (developer)"), url(config::xUrl)}},
                                    page));
    column.addWidget(new LinksPanel(m_model, tr("More from Merrowlight Apps"),
                                    {{Icon::Apps, tr("Our other apps"), QUrl(site + "/")}}, page));
}

void AboutView::takeFocus()
{
    m_updates->takeFocus();
}

} // namespace folvane
