#include "pictures/formats/svg.h"

#include "platform/files/helperProgram.h"

#include <QProcess>
#include <QProcessEnvironment>

#include <array>
#include <chrono>
#include <cstring>

namespace folvane {

namespace {

using namespace std::chrono_literals;

constexpr qsizetype maxSvgBytes = 64 << 20;
constexpr std::chrono::milliseconds drawLimit = 30s;

/// What the program answers: width and height as 32-bit numbers of this machine, then premultiplied ARGB
/// rows.
std::optional<QImage> imageFrom(const QByteArray& answer)
{
    std::array<qint32, 2> size{};
    if (answer.size() < qsizetype(sizeof size))
        return std::nullopt;
    std::memcpy(size.data(), answer.constData(), sizeof size);
    QImage image(size[0], size[1], QImage::Format_ARGB32_Premultiplied);
    if (image.isNull() || answer.size() != qsizetype(sizeof size) + image.sizeInBytes())
        return std::nullopt;
    std::memcpy(image.bits(), answer.constData() + sizeof size, size_t(image.sizeInBytes()));
    return image;
}

QByteArray answerTo(QProcess& program, const QByteArray& svg)
{
    program.write(svg);
    program.closeWriteChannel();
    if (!program.waitForFinished(int(drawLimit.count()))) {
        program.kill();
        program.waitForFinished();
        return {};
    }
    const bool succeeded = program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0;
    return succeeded ? program.readAllStandardOutput() : QByteArray();
}

} // namespace

std::optional<QImage> drawSvg(const QByteArray& svg, int longSide)
{
    const QString path = helperProgram("folvane-draw-svg");
    if (path.isEmpty() || svg.size() > maxSvgBytes)
        return std::nullopt;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
    environment.remove(QStringLiteral("QT_QPA_PLATFORMTHEME")); // drawing needs nothing of the desktop
    QProcess program;
    program.setProcessEnvironment(environment);
    program.setStandardErrorFile(QProcess::nullDevice());
    program.start(path, {QString::number(longSide)});
    if (!program.waitForStarted())
        return std::nullopt;
    return imageFrom(answerTo(program, svg));
}

} // namespace folvane
