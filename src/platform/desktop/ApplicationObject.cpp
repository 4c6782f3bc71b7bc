#include "platform/desktop/ApplicationObject.h"

namespace folvane {

namespace {

QString tokenIn(const QVariantMap& platformData)
{
    const QString modern = platformData.value(activationTokenKey).toString();
    return modern.isEmpty() ? platformData.value(startupIdKey).toString() : modern;
}

// The same file has to have the same URL, however the sender writes it.
QUrl urlFrom(const QString& text)
{
    const QUrl url(text);
    return url.isLocalFile() ? QUrl::fromLocalFile(url.toLocalFile()) : url;
}

} // namespace

void ApplicationObject::Activate(const QVariantMap& platformData)
{
    emit opened({}, tokenIn(platformData));
}

void ApplicationObject::Open(const QStringList& uris, const QVariantMap& platformData)
{
    QList<QUrl> files;
    for (const QString& uri : uris)
        files.append(urlFrom(uri));
    emit opened(files, tokenIn(platformData));
}

void ApplicationObject::ActivateAction(const QString&, const QVariantList&, const QVariantMap& platformData)
{
    Activate(platformData);
}

} // namespace folvane
