#include "platform/desktop/Preferences.h"

namespace folvane {

Preferences::~Preferences() = default;

SettingsPreferences::SettingsPreferences()
    : m_settings(QSettings::IniFormat, QSettings::UserScope, QStringLiteral("folvane"),
                 QStringLiteral("folvane"))
{
    m_settings.setFallbacksEnabled(false);
}

SettingsPreferences::SettingsPreferences(const QString& iniFile) : m_settings(iniFile, QSettings::IniFormat)
{
}

QVariant SettingsPreferences::value(const QString& key, const QVariant& defaultValue) const
{
    return m_settings.value(key, defaultValue);
}

void SettingsPreferences::setValue(const QString& key, const QVariant& value)
{
    if (value.isValid())
        m_settings.setValue(key, value);
    else
        m_settings.remove(key);
}

} // namespace folvane
