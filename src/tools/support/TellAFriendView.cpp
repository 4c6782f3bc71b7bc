#include "tools/support/TellAFriendView.h"

#include "config.h"
#include "controls/appearance.h"
#include "controls/containers/Panel.h"
#include "controls/style/Theme.h"
#include "controls/texts/NoteLabel.h"
#include "viewParts/openLink.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QUrlQuery>
#include <QVBoxLayout>

namespace folvane {

namespace {

constexpr int sheetWidth = 520;
constexpr int spacing = 14;
constexpr int panelPadding = 14;

QString withPage(const QUrl& page)
{
    return TellAFriendView::message() + u' ' + page.toString();
}

} // namespace

TellAFriendView::TellAFriendView(AppModel& model, QUrl productPage, QWidget* parent)
    : SheetFrame(tr("Like Folvane? Tell a friend."), parent, sheetWidth),
      m_model(model),
      m_productPage(std::move(productPage))
{
    setIcon(Icon::People);
    content().setSpacing(spacing);
    content().addWidget(new NoteLabel(tr("Folvane is free: no ads, no tracking. We don't buy ads, so friends "
                                         "telling friends is how people find it."),
                                      13, this));
    addMessage();
    content().addWidget(new NoteLabel(tr("You choose the app and the friend; we never see who."), 13, this));
    addButtons();
}

QString TellAFriendView::message()
{
    //: The message shared with a friend, followed by the link to the app's page.
    return tr(
        "Folvane for Mac: free PDF tools, signatures and stamps, QR codes. Everything stays on your Mac.");
}

QUrl TellAFriendView::mail(const QUrl& productPage)
{
    QUrlQuery fields;
    fields.addQueryItem(QStringLiteral("subject"), config::appName.toString());
    fields.addQueryItem(QStringLiteral("body"),
                        QString::fromLatin1(QUrl::toPercentEncoding(withPage(productPage))));
    QUrl mail(QStringLiteral("mailto:"));
    mail.setQuery(fields);
    return mail;
}

void TellAFriendView::addMessage()
{
    auto* panel = new Panel(panelPadding, this);
    auto* text = new TextLabel(withPage(m_productPage), interfaceFont(13), theme::text, panel);
    text->setWordWrap(true);
    panel->content().addWidget(text);
    content().addWidget(new TextLabel(tr("Your friend gets this message:"), interfaceFont(13, Weight::Medium),
                                      theme::text, this));
    content().addWidget(panel);
}

void TellAFriendView::addButtons()
{
    m_close = addButton(Button::Kind::Secondary, tr("Not Now"));
    m_copy = addButton(Button::Kind::Secondary, tr("Copy Message"));
    m_copy->setSymbol(Icon::Copies);
    auto* share = addButton(Button::Kind::Primary, tr("Share…"));
    share->setSymbol(Icon::Share);
    connect(m_close, &Button::clicked, this, &QDialog::reject);
    connect(m_copy, &Button::clicked, this, &TellAFriendView::copyMessage);
    connect(share, &Button::clicked, this, &TellAFriendView::share);
}

void TellAFriendView::share()
{
    if (openLink(m_model, mail(m_productPage)))
        answered();
}

void TellAFriendView::copyMessage()
{
    QGuiApplication::clipboard()->setText(withPage(m_productPage));
    m_copy->setText(tr("Copied"));
    m_copy->setSymbol(Icon::Check);
    answered();
}

void TellAFriendView::answered()
{
    m_model.answerFriend();
    m_close->setText(tr("Done"));
}

} // namespace folvane
