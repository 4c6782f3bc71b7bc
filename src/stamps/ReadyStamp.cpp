#include "stamps/ReadyStamp.h"

#include <QCoreApplication>
#include <QLocale>
#include <QStringList>
#include <QTextBoundaryFinder>

namespace folvane {

namespace {

constexpr int mostCharacters = 40;

constexpr std::array words{
    QT_TRANSLATE_NOOP("ReadyStamp", "APPROVED"), QT_TRANSLATE_NOOP("ReadyStamp", "PAID"),
    QT_TRANSLATE_NOOP("ReadyStamp", "COPY"),     QT_TRANSLATE_NOOP("ReadyStamp", "CONFIDENTIAL"),
    QT_TRANSLATE_NOOP("ReadyStamp", "DRAFT"),    QT_TRANSLATE_NOOP("ReadyStamp", "RECEIVED")};

} // namespace

QString wordOf(ReadyStamp stamp)
{
    const auto index = static_cast<size_t>(stamp);
    return index < words.size() ? QCoreApplication::translate("ReadyStamp", words.at(index)) : QString();
}

QString customWord(const QString& typed)
{
    const QString word = QLocale().toUpper(typed.trimmed());
    QTextBoundaryFinder characters(QTextBoundaryFinder::Grapheme, word);
    for (int i = 0; i < mostCharacters && characters.toNextBoundary() >= 0; ++i) {}
    return characters.position() < 0 ? word : word.left(characters.position());
}

QString readyStampName(const QString& word, const QString& date)
{
    QStringList parts{word, date};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
}

} // namespace folvane
