#pragma once

#include "stamps/StampLibrary.h"
#include "tools/drawing/InkDrawing.h"

#include <QImage>
#include <QProperty>
#include <QUrl>

#include <optional>
#include <stop_token>
#include <variant>

namespace folvane {

/// The state of an open sheet for a new stamp: a picture is worked on; then there is a stamp, or a text why there is none.
/// Work stops when this dies.
class StampMaking {
public:
    /// A file, the bytes of one, or what was drawn by hand.
    using Picture = std::variant<QUrl, QByteArray, InkDrawing>;
    struct Result {
        StampMaker::Stamp stamp;
        QImage preview;
    };

    /// The library must outlive this.
    explicit StampMaking(StampLibrary& library) : m_library(library) {}
    ~StampMaking() { stop(); }
    Q_DISABLE_COPY_MOVE(StampMaking)

    QProperty<bool> isWorking;
    QProperty<std::optional<Result>> result;
    QProperty<std::optional<QString>> errorText;

    /// Begins to work on a picture; what went on before is dropped.
    void start(const Picture& picture);
    void stop() { m_stop.request_stop(); }
    /// Puts the result into the library. Nothing when there is none or it cannot be stored, which the library then tells.
    std::optional<StampRecord> save(const QString& name);

private:
    QCoro::Task<> work(Picture picture, std::stop_token stop);
    QCoro::Task<> make(Picture picture, std::stop_token stop);

    StampLibrary& m_library;
    std::stop_source m_stop;
};

} // namespace folvane
