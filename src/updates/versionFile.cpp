#include "updates/versionFile.h"

#include "updates/UpdateError.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

namespace folvane {

namespace {

QString sentence(const char* text)
{
    return QCoreApplication::translate("versionFile", text);
}

/// The values of the file, each in the type that it must have.
class VersionFields {
public:
    explicit VersionFields(const QByteArray& json)
    {
        QJsonParseError error;
        const QJsonDocument document = QJsonDocument::fromJson(json, &error);
        if (error.error != QJsonParseError::NoError)
            throw UpdateError::because(error.errorString());
        if (!document.isObject())
            throw UpdateError::because(sentence(QT_TRANSLATE_NOOP("versionFile", "The file is no object.")));
        m_object = document.object();
    }

    QString text(const QString& key) const { return required(key, optionalText(key)); }
    qint64 integer(const QString& key) const { return required(key, optionalInteger(key)); }

    std::optional<QString> optionalText(const QString& key) const
    {
        const QJsonValue value = present(key);
        if (value.isUndefined())
            return std::nullopt;
        if (!value.isString())
            refuse(key, QT_TRANSLATE_NOOP("versionFile", "“%1” isn't text."));
        return value.toString();
    }

    std::optional<QString> optionalAddress(const QString& key) const
    {
        const std::optional<QString> text = optionalText(key);
        if (text && !QUrl(*text, QUrl::StrictMode).isValid())
            refuse(key, QT_TRANSLATE_NOOP("versionFile", "“%1” isn't an address."));
        return text;
    }

private:
    /// Undefined when it is not there.
    QJsonValue present(const QString& key) const
    {
        const QJsonValue value = m_object.value(key);
        return value.isNull() ? QJsonValue(QJsonValue::Undefined) : value;
    }

    std::optional<qint64> optionalInteger(const QString& key) const
    {
        const QJsonValue value = present(key);
        if (value.isUndefined())
            return std::nullopt;
        const qint64 number = value.toInteger(0);
        if (value.toInteger(1) != number) // each time the default came back
            refuse(key, QT_TRANSLATE_NOOP("versionFile", "“%1” isn't a whole number."));
        return number;
    }

    template <typename T>
    static T required(const QString& key, const std::optional<T>& value)
    {
        if (!value)
            refuse(key, QT_TRANSLATE_NOOP("versionFile", "“%1” is missing."));
        return *value;
    }

    [[noreturn]] static void refuse(const QString& key, const char* why)
    {
        throw UpdateError::because(sentence(why).arg(key));
    }

    QJsonObject m_object;
};

} // namespace

UpdateRelease releaseIn(const QByteArray& versionFile)
{
    const VersionFields fields(versionFile);
    return {fields.text("version"), fields.integer("build"), fields.optionalAddress("url"),
            fields.optionalAddress("dmg"), fields.optionalText("sha256")};
}

} // namespace folvane
