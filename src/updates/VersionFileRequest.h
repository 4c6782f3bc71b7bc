#pragma once

#include "updates/UpdateSource.h"

#include <QFuture>
#include <QNetworkAccessManager>
#include <QPromise>

#include <memory>

namespace folvane {

/// One request for the version file. It takes no cookies, keeps nothing, follows redirections on the same site only and
/// reads 64 KiB at most.
class VersionFileRequest {
public:
    /// Sends it.
    VersionFileRequest(const UpdateSource& source, const QNetworkProxy& proxy);

    QFuture<void> end() const { return m_end.future(); }
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
