#include "tools/codes/CodeCard.h"

#include "codes/content/shownText.h"
#include "codes/links/LinkCheck.h"
#include "codes/reading/symbologies.h"
#include "controls/Button.h"
#include "controls/accessibility.h"
#include "controls/appearance.h"
#include "controls/layouts.h"
#include "controls/paletteColors.h"
#include "controls/sheets/NoteBanner.h"
#include "controls/style/Theme.h"
#include "controls/texts/ElidedLabel.h"
#include "controls/texts/SelectableText.h"
#include "controls/texts/breakableText.h"
#include "tools/codes/Capsule.h"
#include "tools/codes/IconBadge.h"
#include "tools/codes/codeIcon.h"
#include "tools/codes/payloadText.h"
#include "viewParts/openLink.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QKeyEvent>

namespace folvane {

namespace {

constexpr int padding = 18;
constexpr int spacing = 10;
constexpr int globeSide = 16;
constexpr qsizetype longestSpoken = 200; // characters of a payload

} // namespace

CodeCard::CodeCard(AppModel& model, FoundCode code, QWidget* parent)
    : Panel(padding, parent),
      m_model(model),
      m_code(std::move(code)),
      m_content(codeContent(m_code.payload, m_code.symbology))
{
    setFocusPolicy(Qt::TabFocus);
    setSpokenRole(*this, QAccessible::ListItem);
    setAccessibleName(
        QStringList{kindTitle(m_content), displayName(m_code.symbology), originLine()}.join(", "));
    setAccessibleDescription(shownLine(m_code.payload).left(longestSpoken));
    content().setSpacing(spacing);
    addHead();
    std::visit([this](const auto& content) { add(content); }, m_content);
}

void CodeCard::addHead()
{
    auto* origin = new ElidedLabel(this);
    origin->setFont(interfaceFont(11.5));
    origin->setText(originLine());
    setTextColor(*origin, theme::secondaryText);
    auto* words = makeColumn(nullptr, {}, 1);
    words->addWidget(
        new TextLabel(kindTitle(m_content), interfaceFont(14, Weight::SemiBold), theme::text, this));
    words->addWidget(origin);
    auto* head = makeRow(nullptr, {}, 10);
    head->addWidget(new IconBadge(codeIcon(m_content), this));
    head->addLayout(words, 1);
    head->addWidget(new Capsule(displayName(m_code.symbology), this));
    content().addLayout(head);
}

QString CodeCard::originLine() const
{
    const QString origin = shownLine(m_code.origin);
    return m_code.page ? tr("%1, page %2").arg(origin, QString::number(*m_code.page)) : origin;
}

void CodeCard::add(const codes::Link& link)
{
    const LinkCheck check = checkLink(link.url, m_code.payload);
    const QString site = tr("Real site: %1").arg(shownSite(check.realSite));
    QStringList spoken{shownLine(check.displayAddress).left(longestSpoken), site};
    addText(*makeAddressText(check, this), kindTitle(m_content));
    addRealSite(site);
    for (const LinkWarning& warning : check.warnings) {
        spoken.append(sentenceOf(warning, shownSite(check.realSite)));
        content().addWidget(new NoteBanner(breakableText(spoken.last()), NoteBanner::Tone::Warning, this));
    }
    setAccessibleDescription(spoken.join(u'\n'));
    Button* open = makeOpenButton(link.url);
    open->setAccessibleDescription(spoken.join(u'\n'));
    addButtons({open, makeCopyButton(tr("Copy Link"), link.url.toString(QUrl::FullyEncoded))});
}

void CodeCard::addText(SelectableText& text, const QString& spokenName)
{
    text.setAccessibleName(spokenName);
    if (m_code.payload.size() > longestSpoken)
        text.letKeyboardIn();
    content().addWidget(&text);
}

void CodeCard::addRealSite(const QString& text)
{
    auto* globe = new QLabel(this);
    globe->setPixmap(
        themedIcon(Icon::Globe, theme::text).pixmap(QSize(globeSide, globeSide), devicePixelRatioF()));
    auto* site = new TextLabel(breakableText(text), interfaceFont(13, Weight::SemiBold), theme::text, this);
    site->setWordWrap(true);
    auto* row = makeRow(nullptr, {}, 6);
    row->addWidget(globe, 0, Qt::AlignTop);
    row->addWidget(site, 1);
    content().addLayout(row);
}

void CodeCard::add(const codes::WiFi& network)
{
    const QString password = network.password.value_or(QString());
    addField(tr("Network"), network.ssid);
    QList<Button*> buttons{makeCopyButton(tr("Copy Network Name"), network.ssid)};
    if (!password.isEmpty()) {
        addField(tr("Password"), password);
        buttons.append(makeCopyButton(tr("Copy Password"), password));
    }
    addButtons(buttons);
}

void CodeCard::addField(const QString& title, const QString& value)
{
    auto* field = makeColumn(nullptr, {}, 2);
    field->addWidget(new TextLabel(title, interfaceFont(11.5, Weight::SemiBold), theme::secondaryText, this));
    SelectableText* text = makePayloadText(value, interfaceFont(14, Weight::Medium), this);
    text->setAccessibleName(title);
    field->addWidget(text);
    content().addLayout(field);
}

void CodeCard::addPayload()
{
    addText(*makePayloadText(m_code.payload, interfaceFont(13), this), kindTitle(m_content));
    addButtons({makeCopyButton(tr("Copy"), m_code.payload)});
}

void CodeCard::addButtons(const QList<Button*>& buttons)
{
    auto* row = makeRow(nullptr, {0, 4, 0, 0}, 10);
    for (Button* button : buttons)
        row->addWidget(button);
    row->addStretch();
    content().addLayout(row);
}

// No warning stands in the way: whether to open it is for the person to say.
Button* CodeCard::makeOpenButton(const QUrl& url)
{
    auto* button = new Button(Button::Kind::Primary, tr("Open in Browser"), this);
    connect(button, &Button::clicked, this, [this, url] { openLink(m_model, url); });
    return button;
}

Button* CodeCard::makeCopyButton(const QString& title, const QString& text)
{
    auto* button = new Button(Button::Kind::Secondary, title, this);
    button->setSymbol(Icon::Copies);
    connect(button, &Button::clicked, this, [this, text] { copy(text); });
    return button;
}

void CodeCard::copy(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
    m_model.showToast(tr("Copied"));
}

void CodeCard::keyPressEvent(QKeyEvent* event)
{
    if (event->matches(QKeySequence::Copy))
        copy(m_code.payload);
    else
        Panel::keyPressEvent(event);
}

} // namespace folvane
