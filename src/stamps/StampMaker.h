#pragma once

#include "platform/tasks/SerialWorker.h"

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <exception>

namespace folvane {

/// Turns a photo of a signature or stamp on paper into a picture of its ink on a transparent ground, one after the other on
/// a thread of its own. A picture that can be seen through already keeps its pixels; all are cut to the ink.
class StampMaker {
public:
    /// A PNG with an alpha channel, and its size in pixels.
    struct Stamp {
        QByteArray png;
        qint64 pixelWidth = 0;
        qint64 pixelHeight = 0;
    };

    class StampError : public std::exception {
    public:
        enum class Kind { Unreadable, NoInk };

        explicit StampError(Kind kind) : m_kind(kind) {}

        Kind kind() const { return m_kind; }
        /// In the user's language.
        QString errorDescription() const;
        const char* what() const noexcept override { return "no stamp"; }

    private:
        Kind m_kind;
    };

    /// The one that all share.
    static StampMaker& shared();

    // A stop frees who asked at once, with Cancelled. They throw StampError.
    QCoro::Task<Stamp> makeStamp(QUrl file, std::stop_token stop = {});
    QCoro::Task<Stamp> makeStamp(QByteArray bytes, std::stop_token stop = {});

private:
    SerialWorker m_worker{QStringLiteral("stamps")};
};

} // namespace folvane
