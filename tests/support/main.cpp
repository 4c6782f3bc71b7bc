#include "platform/texts/translations.h"

#include <QTemporaryDir>
#include <gtest/gtest.h>

#ifdef QT_WIDGETS_LIB
#include <QApplication>
using Application = QApplication;
#else
#include <QGuiApplication>
using Application = QGuiApplication;
#endif

// Tests never see or touch what the person at this machine has stored, and never need a display.
int main(int argc, char** argv)
{
    const QTemporaryDir home;
    if (!home.isValid())
        qFatal("No temporary folder can be made: %s", qPrintable(home.errorString()));
    qputenv("XDG_DATA_HOME", home.filePath("data").toUtf8());
    qputenv("XDG_CONFIG_HOME", home.filePath("config").toUtf8());
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    const Application application(argc, argv);
    folvane::installTranslations();
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
