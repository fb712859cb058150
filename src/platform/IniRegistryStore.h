#pragma once
#include "platform/RegistryStore.h"
#include <QSettings>

namespace platform {

/// The user's small settings in an ini file; by default in the user's configuration folder.
class IniRegistryStore : public RegistryStore {
  public:
    IniRegistryStore();
    explicit IniRegistryStore(const QString& file);
    QString GetSetting(const QString& application, const QString& section, const QString& key,
                       const QString& fallback = {}) override;
    /// Throws RunTimeError kPlatformFailure when the file cannot be written.
    void SaveSetting(const QString& application, const QString& section, const QString& key,
                     const QString& value) override;

  private:
    QSettings m_settings;
};

} // namespace platform
