#pragma once

#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace folvane {

/// The driver as a person at a terminal has it, in a new folder, where it also keeps its preferences. Lines are JSON with
/// single quotes. A path in the folder is relative in a request, and begins with "@/" in an answer.
class DriverTest : public testing::Test {
protected:
    /// Ready are a.pdf with five pages, b.pdf with two, and full.pdf, where no byte can be written.
    DriverTest();
    ~DriverTest() override;

    QString path(const QString& name) const { return m_folder.filePath(name); }
    void makeLocked(const QString& name, const QString& password) const;
    void write(const QString& name, const QByteArray& bytes) const;

    void send(const QByteArray& line);
    QJsonObject receive();
    QJsonObject ask(const QByteArray& line);
    /// Asks, and fails where the answer lacks something that the wanted one has.
    void expect(const QByteArray& line, const QByteArray& wanted);
    /// The same of the answer to the first line that is not answered yet.
    void expectNext(const QByteArray& wanted);
    /// Ends the input; gives the number of lines that are still answered.
    qsizetype finish();

    QTemporaryDir m_folder;
    QProcess m_driver;
};

} // namespace folvane
