// folvane-codes-in: reads paths of pictures from standard input, one a line, and answers each with a line of JSON: the codes
// that the program reads in it, and how long that took.

#include "codes/reading/CodeReader.h"
#include "codes/reading/symbologies.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QImageReader>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <iostream>
#include <string>

namespace {

QJsonObject answerFor(folvane::CodeReader& reader, const QString& path)
{
    const QImage image = QImageReader(path).read();
    QElapsedTimer timer;
    timer.start();
    QJsonArray codes;
    for (const folvane::ReadCode& code : reader.codes(image))
        codes.append(QJsonArray{folvane::rawText(code.symbology), code.payload});
    return {{"codes", codes}, {"ms", timer.nsecsElapsed() / 1e6}, {"isPicture", !image.isNull()}};
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    QImageReader::setAllocationLimit(0);
    folvane::CodeReader reader;
    for (std::string path; std::getline(std::cin, path);)
        std::cout << QJsonDocument(answerFor(reader, QString::fromStdString(path)))
                         .toJson(QJsonDocument::Compact)
                         .toStdString()
                  << std::endl;
}
