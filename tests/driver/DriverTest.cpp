#include "DriverTest.h"

#include <QFile>
#include <QImage>
#include <QJsonDocument>

#include <ostream>
#include <stdexcept>

void PrintTo(const QJsonObject& object, std::ostream* out)
{
    *out << QJsonDocument(object).toJson(QJsonDocument::Compact).toStdString();
}

void PrintTo(const QJsonArray& array, std::ostream* out)
{
    *out << QJsonDocument(array).toJson(QJsonDocument::Compact).toStdString();
}

void PrintTo(const QJsonValue& value, std::ostream* out)
{
    PrintTo(QJsonArray{value}, out);
}

namespace folvane {

namespace {

QByteArray object(int number, const QByteArray& value)
{
    return QByteArray::number(number) + " 0 obj\n" + value + "\nendobj\n";
}

QByteArray stream(const QByteArray& content)
{
    return "<</Length " + QByteArray::number(content.size()) + ">>stream\n" + content + "\nendstream";
}

QByteArray page(int content)
{
    return "<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents " + QByteArray::number(content)
           + " 0 R/Resources<</Font<</F 3 0 R>>>>>>";
}

QList<QByteArray> values(const QList<QByteArray>& contents)
{
    QByteArray kids;
    QList<QByteArray> pages;
    for (const QByteArray& content : contents) {
        const int number = 4 + int(pages.size());
        kids += QByteArray::number(number) + " 0 R ";
        pages << page(number + 1) << stream(content);
    }
    const QByteArray count = QByteArray::number(contents.size());
    return QList<QByteArray>{"<</Type/Catalog/Pages 2 0 R>>",
                             "<</Type/Pages/Count " + count + "/Kids[" + kids + "]>>",
                             "<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"}
           + pages;
}

QByteArray pdfBytes(const QList<QByteArray>& contents)
{
    QByteArray bytes = "%PDF-1.4\n";
    QByteArray table = "0000000000 65535 f \n";
    int number = 0;
    for (const QByteArray& value : values(contents)) {
        table += QByteArray::number(bytes.size()).rightJustified(10, '0') + " 00000 n \n";
        bytes += object(++number, value);
    }
    const QByteArray size = QByteArray::number(number + 1);
    const QByteArray start = QByteArray::number(bytes.size());
    return bytes + "xref\n0 " + size + "\n" + table + "trailer\n<</Size " + size
           + "/Root 1 0 R>>\nstartxref\n" + start + "\n%%EOF\n";
}

QStringList withPassword(const char* option, const QString& password, QStringList rest)
{
    if (!password.isEmpty())
        rest.prepend(QLatin1String(option) + password);
    return rest;
}

} // namespace

DriverTest::DriverTest() : driver(std::make_unique<DriverProcess>(m_folder.path())) {}

QString DriverTest::file(const QString& name, const QByteArray& bytes) const
{
    QFile file(path(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("a fixture cannot be written");
    return path(name);
}

QString DriverTest::pdf(const QString& name, const QStringList& texts) const
{
    QList<QByteArray> contents;
    for (const QString& text : texts)
        contents << "BT/F 24 Tf 72 700 Td(" + text.toUtf8() + ")Tj ET";
    return file(name, pdfBytes(contents));
}

QString DriverTest::pdf(const QString& name, int count) const
{
    QStringList texts;
    for (int i = 1; i <= count; ++i)
        texts << name.section(u'.', 0, 0) + u'-' + QString::number(i);
    return pdf(name, texts);
}

QString DriverTest::slowPdf(const QString& name) const
{
    QByteArray content = "40 w\n";
    for (int i = 0; i < 400; ++i)
        content += "0 " + QByteArray::number(2 * i) + " m 600 " + QByteArray::number(800 - 2 * i) + " l S\n";
    return file(name, pdfBytes({content}));
}

QString DriverTest::lockedPdf(const QString& name, const QStringList& texts, const QString& password) const
{
    const QString plain = pdf("unlocked.pdf", texts);
    outputOf("qpdf", {"--encrypt", password, password, "256", "--", plain, path(name)});
    QFile::remove(plain);
    return path(name);
}

QString DriverTest::picture(const QString& name) const
{
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    if (!image.save(path(name)))
        throw std::runtime_error("a picture cannot be written");
    return path(name);
}

QJsonObject DriverTest::ask(const char* verb, QJsonObject fields)
{
    fields["do"] = QLatin1String(verb);
    return ask(fields);
}

QJsonObject DriverTest::open(const QStringList& paths, QJsonObject more)
{
    more["files"] = QJsonArray::fromStringList(paths);
    return ask("open", more);
}

QJsonObject DriverTest::document(int place)
{
    return ask("state")["documents"].toArray().at(place).toObject();
}

QByteArray contentsOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("cannot read " + path.toStdString());
    return file.readAll();
}

QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::MergedChannels);
    tool.start(program, arguments);
    if (!tool.waitForFinished(120'000) || tool.exitStatus() != QProcess::NormalExit)
        throw std::runtime_error("cannot run " + program.toStdString());
    return QString::fromUtf8(tool.readAll());
}

QStringList texts(const QString& path, const QString& password)
{
    const QStringList arguments{path, "-"};
    const QString all =
        outputOf("pdftotext", password.isEmpty() ? arguments : QStringList{"-upw", password} + arguments);
    QStringList pages = all.split(u'\f');
    pages.removeLast(); // a form feed ends each page
    for (QString& page : pages)
        page = page.trimmed();
    return pages;
}

testing::AssertionResult isSound(const QString& path, const QString& password)
{
    const QString said = outputOf("qpdf", withPassword("--password=", password, {"--check", path}));
    const bool sound = said.contains(QLatin1String("No syntax or stream encoding errors found"));
    return (sound ? testing::AssertionSuccess() : testing::AssertionFailure()) << said.toStdString();
}

} // namespace folvane
