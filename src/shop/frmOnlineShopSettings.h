#pragma once
#include "platform/Services.h"

class QAbstractButton;
class QComboBox;

/// What the screens of the shop's settings have in common.
namespace frmOnlineShopSettings {

/// The button leads to the screen that brings the settings to the shop; disabled where that cannot be
/// reached.
void setUpInternet(QAbstractButton& cmdInternet, const platform::Services& services);
/// The numbers as two digits.
void fillSteps(QComboBox& list, int first, int last, int step);

} // namespace frmOnlineShopSettings
