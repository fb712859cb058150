#pragma once
#include "platform/Services.h"
#include "shell/ScreenRegistry.h"
#include "telephony/PhoneBook.h"

namespace shell {

/// Adds every screen of the program to the registry. The services and the phone book outlive the screens.
void registerScreens(ScreenRegistry& registry, const platform::Services& services,
                     telephony::PhoneBook& phoneBook);

} // namespace shell
