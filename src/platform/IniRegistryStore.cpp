#include "platform/IniRegistryStore.h"
#include "common/RunTimeError.h"
#include <QStandardPaths>

namespace platform {
namespace {

QString defaultFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
           QStringLiteral("/Tavolino/settings.ini");
}

QString path(const QString& application, const QString& section, const QString& key) {
    return QStringLiteral("%1/%2/%3").arg(application, section, key);
}

} // namespace

IniRegistryStore::IniRegistryStore() : IniRegistryStore(defaultFile()) {
}

IniRegistryStore::IniRegistryStore(const QString& file) : m_settings(file, QSettings::IniFormat) {
}

QString IniRegistryStore::GetSetting(const QString& application, const QString& section, const QString& key,
                                     const QString& fallback) {
    return m_settings.value(path(application, section, key), fallback).toString();
}

void IniRegistryStore::SaveSetting(const QString& application, const QString& section, const QString& key,
                                   const QString& value) {
    m_settings.setValue(path(application, section, key), value);
    m_settings.sync();
    if (m_settings.status() != QSettings::NoError)
        throw common::RunTimeError(
            common::kPlatformFailure,
            QStringLiteral("Die Einstellungen des Benutzers können nicht gespeichert werden."),
            m_settings.fileName());
}

} // namespace platform
