#include "shell/PasswordPrompt.h"

#include "controls/Button.h"
#include "controls/Theme.h"
#include "controls/appearance.h"
#include "controls/icons.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace folvane {

namespace {

constexpr int promptWidth = 480;
constexpr int iconSide = 24;

// A file name has no end of length and perhaps no space to break at: it gives way in the middle, not the sentence.
QString fittingTitle(const QString& fileName, const QFontMetrics& metrics, int room)
{
    const QString title = PasswordPrompt::tr("“%1” is locked");
    const int others = metrics.horizontalAdvance(QString(title).remove(QStringLiteral("%1")));
    return title.arg(metrics.elidedText(fileName, Qt::ElideMiddle, room - others));
}

} // namespace

PasswordPrompt::PasswordPrompt(const PasswordRequest& request, QWidget* parent)
    : QDialog(parent), m_password(new QLineEdit(this))
{
    setWindowTitle(tr("“%1” is locked").arg(request.fileName));
    setFixedWidth(promptWidth);
    auto* icon = new QLabel(this);
    icon->setPixmap(
        themedIcon(Icon::Lock, theme::accent).pixmap(QSize(iconSide, iconSide), devicePixelRatioF()));
    auto* title = new QLabel(this);
    title->setTextFormat(Qt::PlainText);
    title->setFont(interfaceFont(17, Weight::Bold));
    title->setText(
        fittingTitle(request.fileName, title->fontMetrics(), promptWidth - 2 * 24 - iconSide - 10));
    title->setToolTip(request.fileName.toHtmlEscaped());
    auto* text =
        new QLabel(request.wasWrong ? tr("That password didn't open it. Try again.")
                                    : tr("Enter its password to open it. The password stays on this Mac."),
                   this);
    text->setWordWrap(true);
    m_password->setEchoMode(QLineEdit::Password);
    m_password->setPlaceholderText(tr("Password"));
    m_password->setAccessibleName(tr("Password"));
    m_password->setMinimumHeight(34);

    auto* cancel = new Button(Button::Kind::Secondary, tr("Cancel"), this);
    auto* open = new Button(Button::Kind::Primary, tr("Open"), this);
    open->setDefault(true);
    open->setEnabled(false);

    auto* head = new QHBoxLayout;
    head->setSpacing(10);
    head->addWidget(icon);
    head->addWidget(title, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cancel);
    buttons->addWidget(open);
    auto* column = new QVBoxLayout(this);
    column->setContentsMargins(24, 24, 22, 20);
    column->setSpacing(14);
    column->addLayout(head);
    column->addWidget(text);
    column->addWidget(m_password);
    column->addSpacing(4);
    column->addLayout(buttons);

    connect(m_password, &QLineEdit::textChanged, open,
            [open](const QString& typed) { open->setEnabled(!typed.isEmpty()); });
    connect(cancel, &Button::clicked, this, &QDialog::reject);
    connect(open, &Button::clicked, this, &QDialog::accept);
    connect(this, &QDialog::accepted, this, [this] { emit answered(m_password->text()); });
    connect(this, &QDialog::rejected, this, [this] { emit answered(std::nullopt); });
    m_password->setFocus();
}

} // namespace folvane
