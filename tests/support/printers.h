#pragma once

// Readable failures: how GoogleTest prints the Qt values that our records consist of.
// Included before everything else in every test source, because PrintTo must be seen first.

#include <QString>
#include <QUrl>
#include <QUuid>

#include <ostream>

inline void PrintTo(const QString& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QUrl& url, std::ostream* out)
{
    *out << url.toString().toStdString();
}

inline void PrintTo(const QUuid& id, std::ostream* out)
{
    *out << id.toString(QUuid::WithoutBraces).toStdString();
}
