#include "contentJson.h"

#include <QCoreApplication>
#include <QJsonDocument>

#include <iostream>
#include <string>

// Answers each line {"payload": …, "symbology": …} with a line of what the payload means, for contentReference.py.

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    for (std::string line; std::getline(std::cin, line);) {
        const QJsonObject asked = QJsonDocument::fromJson(QByteArray::fromStdString(line)).object();
        const auto symbology = folvane::symbologyOf(asked["symbology"].toString());
        if (!symbology)
            return 1;
        const folvane::CodeContent content = folvane::codeContent(asked["payload"].toString(), *symbology);
        std::cout << QJsonDocument(folvane::contentJson(content)).toJson(QJsonDocument::Compact).constData()
                  << '\n';
    }
    return 0;
}
