// folvane-codes-in: reads paths of pictures from standard input, one a line, and answers each with a line of JSON: the codes
// that the program reads in it, how long that took, and how many pixels it has, 0 when it cannot be decoded.

#include "codes/reading/CodeReader.h"
#include "codes/reading/symbologies.h"
#include "pictures/pictures.h"

#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <iostream>
#include <string>

namespace {

QImage decoded(const QString& path)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        return {};
    const auto picture = folvane::decodePicture({file.readAll()}, QFileInfo(path).suffix().toLower());
    return picture ? picture->image : QImage();
}

QJsonObject answerFor(folvane::CodeReader& reader, const QString& path)
{
    const QImage image = decoded(path);
    QElapsedTimer timer;
    timer.start();
    QJsonArray codes;
    for (const folvane::ReadCode& code : reader.codes(image))
        codes.append(QJsonArray{folvane::rawText(code.symbology), code.payload});
    return {{"codes", codes},
            {"ms", timer.nsecsElapsed() / 1e6},
            {"pixels", qint64(image.width()) * image.height()}};
}

} // namespace

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    folvane::preparePictureDecoding();
    folvane::CodeReader reader;
    for (std::string path; std::getline(std::cin, path);)
        std::cout << QJsonDocument(answerFor(reader, QString::fromStdString(path)))
                         .toJson(QJsonDocument::Compact)
                         .toStdString()
                  << std::endl;
}
