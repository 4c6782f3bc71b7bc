#pragma once

#include <QDBusContext>
#include <QDBusError>
#include <QDBusObjectPath>
#include <QDBusUnixFileDescriptor>
#include <QDesktopServices>
#include <QFile>
#include <QObject>
#include <QStringList>
#include <QUrl>
#include <QVariantMap>

namespace folvane {

enum class Manner { Missing, Works, Fails };

/// Has both interfaces of the desktop that can show a file; keeps what each was asked.
class Desktop : public QObject, public QDBusContext {
    Q_OBJECT

public:
    Manner manner = Manner::Works;
    QStringList shown;

    void answer(const QString& text)
    {
        shown.append(text);
        if (manner == Manner::Fails)
            sendErrorReply(QDBusError::Failed, QStringLiteral("not today"));
    }
};

class FileManager : public Desktop {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public slots:
    void ShowItems(const QStringList& uris, const QString&) { answer(uris.join(QLatin1Char(' '))); }
};

class Portal : public Desktop {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.portal.OpenURI")

public slots:
    QDBusObjectPath OpenDirectory(const QString&, const QDBusUnixFileDescriptor& file, const QVariantMap&)
    {
        answer(QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(file.fileDescriptor())));
        return QDBusObjectPath(QStringLiteral("/request"));
    }
};

/// Stands for the program that opens folders.
class FolderOpener : public QObject {
    Q_OBJECT

public:
    FolderOpener() { QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open"); }
    ~FolderOpener() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    QStringList shown;

public slots:
    void open(const QUrl& folder) { shown.append(folder.toLocalFile()); }
};

} // namespace folvane
