#pragma once

#include <QSettings>
#include <QString>
#include <QVariant>

namespace folvane {

/// The user's preferences: values under dotted keys. For the interface thread.
class Preferences {
public:
    virtual ~Preferences();

    virtual QVariant value(const QString& key, const QVariant& defaultValue = {}) const = 0;
    /// An invalid value removes the key.
    virtual void setValue(const QString& key, const QVariant& value) = 0;
};

/// Kept in an INI file in the user's configuration folder ($XDG_CONFIG_HOME). Values may come back as text:
/// read them with toInt(), toBool().
class SettingsPreferences final : public Preferences {
public:
    SettingsPreferences();
    explicit SettingsPreferences(const QString& iniFile);

    QVariant value(const QString& key, const QVariant& defaultValue = {}) const override;
    void setValue(const QString& key, const QVariant& value) override;

private:
    QSettings m_settings;
};

} // namespace folvane
