#pragma once

#include "DriverProcess.h"

#include <QTemporaryDir>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iosfwd>
#include <memory>

void PrintTo(const QJsonObject& object, std::ostream* out);
void PrintTo(const QJsonArray& array, std::ostream* out);
void PrintTo(const QJsonValue& value, std::ostream* out);

namespace folvane {

/// A driver in a new folder, with the means to make files for it and to look at what it made.
class DriverTest : public testing::Test {
protected:
    DriverTest();

    QString path(const QString& name) const { return m_folder.filePath(name); }
    /// Writes a PDF with one page for each text; gives its path.
    QString pdf(const QString& name, const QStringList& texts) const;
    /// The same, with pages "name-1" to "name-count".
    QString pdf(const QString& name, int count) const;
    QString lockedPdf(const QString& name, const QStringList& texts, const QString& password) const;
    QString picture(const QString& name) const;
    QString file(const QString& name, const QByteArray& bytes) const;
    /// A page that takes long to draw.
    QString slowPdf(const QString& name) const;

    QJsonObject ask(const QJsonObject& request) { return driver->ask(request); }
    QJsonObject ask(const char* verb, QJsonObject fields = {});
    QJsonObject open(const QStringList& paths, QJsonObject more = {});
    QJsonObject document(int place = 0);
    bool isEdited(int place = 0) { return document(place)["isEdited"].toBool(); }

    QTemporaryDir m_folder;
    std::unique_ptr<DriverProcess> driver;
};

QByteArray contentsOf(const QString& path);
/// The words of each page, by pdftotext.
QStringList texts(const QString& path, const QString& password = {});
/// What `qpdf --check` says.
testing::AssertionResult isSound(const QString& path, const QString& password = {});
/// Runs a tool to its end; its output, errors included. Throws when it cannot be run.
QString outputOf(const QString& program, const QStringList& arguments);

MATCHER_P(HasOutcome, wanted, "")
{
    return arg["outcome"].toString() == QLatin1String(wanted);
}
MATCHER_P(HasError, wanted, "")
{
    return arg["error"].toString() == wanted;
}

} // namespace folvane
