#pragma once

#include "tour/Stage.h"

#include <QApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <cstdio>

namespace folvane {

/// The whole of a program that measures something in the window, away from the user's own files: it prints what `measure` gives for
/// its arguments as one JSON object, and `usage` when they do not `fit`.
template <typename Fit, typename Measure>
int tellMeasured(int argc, char** argv, const char* usage, Fit fit, Measure measure)
{
    constexpr int usageFault = 2;
    const QTemporaryDir home;
    prepareEnvironment(home.path());
    const QApplication application(argc, argv);
    prepareApplication();
    const QStringList words = QCoreApplication::arguments();
    if (!fit(words)) {
        std::fprintf(stderr, "%s\n", usage);
        return usageFault;
    }
    try {
        const QJsonObject measured = measure(words);
        std::printf("%s\n", QJsonDocument(measured).toJson(QJsonDocument::Compact).constData());
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}

} // namespace folvane
