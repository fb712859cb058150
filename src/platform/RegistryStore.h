#pragma once
#include <QString>

namespace platform {

/// The small settings of the user that live outside the databases: application, section, key.
class RegistryStore {
  public:
    virtual ~RegistryStore() = default;
    virtual QString GetSetting(const QString& application, const QString& section, const QString& key,
                               const QString& fallback = {}) = 0;
    virtual void SaveSetting(const QString& application, const QString& section, const QString& key,
                             const QString& value) = 0;
};

} // namespace platform
