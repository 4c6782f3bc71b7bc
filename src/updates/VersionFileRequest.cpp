#include "updates/VersionFileRequest.h"

#include "config.h"
#include "updates/UpdateError.h"

#include <QCoreApplication>
#include <QNetworkProxy>
#include <QNetworkReply>

#include <cerrno>

namespace folvane {

namespace {

constexpr qint64 mostBytes = 64 << 10;

/// It tells the server no more than which program asks.
QNetworkRequest plainRequest(const UpdateSource& source)
{
    QNetworkRequest request(source.versionFile);
    if (source.tls)
        request.setSslConfiguration(*source.tls);
    request.setTransferTimeout(int(source.timeout.count()));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    request.setHeader(QNetworkRequest::UserAgentHeader,
                      QStringLiteral("%1/%2").arg(config::appName, config::version));
    request.setRawHeader("Accept-Encoding", "identity"); // unpacked, it could be longer than what is counted
    request.setRawHeader("Accept-Language", "*");
    return request;
}

} // namespace

VersionFileRequest::VersionFileRequest(const UpdateSource& source, const QNetworkProxy& proxy)
    : m_network(std::make_unique<QNetworkAccessManager>())
{
    m_end.start();
    m_network->setProxy(proxy);
    m_reply = m_network->get(plainRequest(source));
    m_reply->setReadBufferSize(mostBytes + 1);
    QObject::connect(m_reply, &QNetworkReply::readyRead, m_reply, [this] { watchLength(); });
    QObject::connect(m_reply, &QNetworkReply::finished, m_reply, [this] { m_end.finish(); });
}

void VersionFileRequest::watchLength()
{
    if (m_isTooLong || m_reply->bytesAvailable() <= mostBytes)
        return;
    m_isTooLong = true;
    m_reply->abort();
}

std::optional<QUrl> VersionFileRequest::redirection() const
{
    const QVariant location = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute);
    const QUrl from = m_reply->url(), to = from.resolved(location.toUrl());
    const bool staysHere = to.scheme() == u"https" && to.host() == from.host();
    return location.isValid() && staysHere ? std::optional(to) : std::nullopt;
}

// The status comes first: to the library one that tells of an error is an error, too.
QByteArray VersionFileRequest::bytes() const
{
    constexpr int ok = 200;
    const QVariant status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute); // none of a file
    if (status.isValid() && status.toInt() != ok) //: Check for Updates error
        throw UpdateError(QCoreApplication::translate(
            "UpdateError", "The update information isn't available right now. Try again later."));
    if (m_isTooLong)
        throw UpdateError::because(qt_error_string(EFBIG));
    if (m_reply->error() == QNetworkReply::OperationCanceledError)
        throw UpdateError::because(qt_error_string(ETIMEDOUT));
    if (m_reply->error() != QNetworkReply::NoError)
        throw UpdateError::because(m_reply->errorString());
    return m_reply->readAll();
}

void VersionFileRequest::stop()
{
    m_network.reset();
    m_end.finish();
}

} // namespace folvane
