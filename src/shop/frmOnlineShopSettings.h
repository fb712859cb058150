#pragma once
#include "platform/Services.h"
#include <QString>

class QAbstractButton;

/// What the screens of the shop's settings have in common.
namespace frmOnlineShopSettings {

/// The button leads to the screen that brings the settings to the shop; disabled where that cannot be
/// reached.
void setUpInternet(QAbstractButton& cmdInternet, const platform::Services& services);
/// What has just happened, in the main window's status line.
void note(const platform::Services& services, const QString& message);

} // namespace frmOnlineShopSettings
