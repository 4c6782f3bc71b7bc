#include "controls/style/mnemonics.h"

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QMenu>
#include <QMenuBar>
#include <QSet>

#include <optional>

namespace folvane {

namespace {

constexpr QChar mark = u'&';

QString words(const QString& title)
{
    return title.section(u'\t', 0, 0); // a key is shown behind it
}

std::optional<QChar> mnemonicOf(const QString& title)
{
    const QKeySequence key = QKeySequence::mnemonic(title);
    return key.isEmpty() ? std::nullopt : std::optional(key.toString().back().toLower());
}

/// Where a mnemonic may stand, the best places first.
QList<qsizetype> places(const QString& words)
{
    QList<qsizetype> firsts;
    QList<qsizetype> others;
    for (qsizetype i = 0; i < words.size(); ++i) {
        if (words[i].isLetterOrNumber())
            (i == 0 || !words[i - 1].isLetterOrNumber() ? firsts : others).append(i);
    }
    return firsts + others;
}

class MnemonicFilter : public QObject {
public:
    using QObject::QObject;
    ~MnemonicFilter() override { s_shown = false; }

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::ShortcutOverride:
        case QEvent::KeyPress: setAlt(isWithAlt(static_cast<QKeyEvent&>(*event))); break;
        case QEvent::KeyRelease:
            if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt)
                setAlt(false);
            break;
        case QEvent::Show:
            if (auto* menu = qobject_cast<QMenu*>(watched))
                giveMnemonics(*menu);
            break;
        case QEvent::Hide:
        case QEvent::FocusOut:
            if (s_shown && (qobject_cast<QMenu*>(watched) || qobject_cast<QMenuBar*>(watched)))
                refreshLater();
            break;
        case QEvent::ApplicationDeactivate: setAlt(false); break;
        default: break;
        }
        return false;
    }

    static inline bool s_shown = false;

private:
    static bool isWithAlt(const QKeyEvent& key)
    {
        return key.key() == Qt::Key_Alt || key.modifiers() & Qt::AltModifier;
    }

    void setAlt(bool held)
    {
        if (held == m_alt)
            return;
        m_alt = held;
        if (held)
            show(true);
        else
            refreshLater();
    }

    // The menu bar takes the keyboard only after its event has passed here.
    void refreshLater()
    {
        QMetaObject::invokeMethod(
            this, [this] { show(s_shown && (m_alt || isInMenus())); }, Qt::QueuedConnection);
    }

    static bool isInMenus()
    {
        return qobject_cast<QMenu*>(QApplication::activePopupWidget())
               || qobject_cast<QMenuBar*>(QApplication::focusWidget());
    }

    static void show(bool shown)
    {
        if (shown == s_shown)
            return;
        s_shown = shown;
        for (QWidget* widget : QApplication::allWidgets()) {
            if (widget->isVisible() && (qobject_cast<QMenu*>(widget) || qobject_cast<QMenuBar*>(widget)))
                widget->update();
        }
    }

    static void giveMnemonics(const QMenu& menu)
    {
        QList<QAction*> entries;
        QStringList titles;
        for (QAction* entry : menu.actions()) {
            if (entry->isSeparator() || !entry->isVisible())
                continue;
            entries.append(entry);
            titles.append(entry->text());
        }
        const QStringList marked = withMnemonics(titles);
        for (qsizetype i = 0; i < entries.size(); ++i)
            entries[i]->setText(marked[i]);
    }

    bool m_alt = false;
};

} // namespace

QString literal(QString title)
{
    return title.replace(u'&', QLatin1String("&&"));
}

QStringList withMnemonics(const QStringList& titles)
{
    QSet<QChar> taken;
    for (const QString& title : titles) {
        if (const std::optional<QChar> mnemonic = mnemonicOf(title))
            taken.insert(*mnemonic);
    }
    QStringList marked = titles;
    for (QString& title : marked) {
        if (mnemonicOf(title))
            continue;
        const QString plain = words(title);
        for (const qsizetype place : places(plain)) {
            if (taken.contains(plain[place].toLower()))
                continue;
            taken.insert(plain[place].toLower());
            title.insert(place, mark);
            break;
        }
    }
    return marked;
}

void installMnemonics(QObject& application)
{
    application.installEventFilter(new MnemonicFilter(&application));
}

bool showsMnemonics()
{
    return MnemonicFilter::s_shown;
}

} // namespace folvane
