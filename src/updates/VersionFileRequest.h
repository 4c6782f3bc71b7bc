#pragma once

#include "updates/UpdateSource.h"

#include <QFuture>
#include <QNetworkAccessManager>
#include <QPromise>

#include <memory>
#include <optional>

namespace folvane {

/// One request for the version file. It keeps nothing, brings nothing from others, and reads 64 KiB at most.
class VersionFileRequest {
public:
    /// Sends it.
    VersionFileRequest(const UpdateSource& source, const QNetworkProxy& proxy);

    QFuture<void> end() const { return m_end.future(); }
    /// Where it was sent on to, if that is the same host by https. The library would follow by itself, but was seen to wait for ever
    /// then, whatever its time limit.
    std::optional<QUrl> redirection() const;
    /// What came, once it has ended by itself. Throws UpdateError.
    QByteArray bytes() const;
    /// Ends it at once, with every connection.
    void stop();

private:
    void watchLength();

    std::unique_ptr<QNetworkAccessManager> m_network;
    QNetworkReply* m_reply;
    QPromise<void> m_end;
    bool m_isTooLong = false;
};

} // namespace folvane
