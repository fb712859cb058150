#pragma once
#include "maintenance/PackageFetch.h"
#include "platform/Services.h"
#include "shell/ScreenRegistry.h"
#include "telephony/PhoneBook.h"

namespace shell {

/// Adds every screen of the program to the registry. The services, the phone book and the publisher outlive
/// the screens.
void registerScreens(ScreenRegistry& registry, const platform::Services& services,
                     telephony::PhoneBook& phoneBook, const maintenance::Publisher& publisher);

} // namespace shell
