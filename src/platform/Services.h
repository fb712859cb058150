#pragma once

namespace platform {

class Dialogs;
class Internet;
class Navigation;
class Printers;
class RegistryStore;
class Reports;

/// The long-lived objects that every screen is handed at its construction. They outlive all screens.
struct Services {
    Dialogs& dialogs;
    Navigation& navigation;
    RegistryStore& registry;
    Reports& reports;
    Printers& printers;
    Internet& internet;
};

} // namespace platform
