#pragma once

#include "platform/desktop/Preferences.h"

#include <QHash>

namespace folvane {

/// Preferences that are forgotten at the end of the process.
class MemoryPreferences final : public Preferences {
public:
    QVariant value(const QString& key, const QVariant& defaultValue = {}) const override
    {
        return m_values.value(key, defaultValue);
    }
    void setValue(const QString& key, const QVariant& value) override
    {
        value.isValid() ? void(m_values.insert(key, value)) : void(m_values.remove(key));
    }

private:
    QHash<QString, QVariant> m_values;
};

} // namespace folvane
