#include "Program.h"
#include "serve.h"

#include "config.h"
#include "pictures/pictures.h"
#include "platform/files/SourceFile.h"

#include <QGuiApplication>

#include <exception>

namespace {

using namespace folvane;

// Text in pictures needs the fonts of a Qt platform, but no display.
void workWithoutDisplay()
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

QCoro::Task<> serveAndQuit(driver::Program* program)
{
    int status = 0;
    try {
        QCoro::Task<> serving = driver::serve(program);
        co_await serving;
    } catch (const std::exception& error) {
        qCritical("%s", error.what());
        status = 1;
    }
    QCoreApplication::exit(status);
}

} // namespace

int main(int argc, char** argv)
{
    workWithoutDisplay();
    QGuiApplication application(argc, argv);
    QCoreApplication::setApplicationName(config::appName.toString());
    raiseDescriptorLimit();
    preparePictureDecoding();
    driver::Program program;
    QMetaObject::invokeMethod(&application, [&program] { serveAndQuit(&program); }, Qt::QueuedConnection);
    return QCoreApplication::exec();
}
