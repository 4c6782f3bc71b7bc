#pragma once

#include <QFile>
#include <QTemporaryDir>
#include <QUrl>

#include <stdexcept>

namespace folvane {

/// A folder that goes with the test.
class TestFolder {
public:
    QString path(const QString& name) const { return m_folder.filePath(name); }
    QUrl url(const QString& name = {}) const { return QUrl::fromLocalFile(path(name)); }
    QUrl put(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            throw std::runtime_error("cannot write " + name.toStdString());
        return url(name);
    }
    QByteArray get(const QString& name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }

    QTemporaryDir m_folder;
};

} // namespace folvane
