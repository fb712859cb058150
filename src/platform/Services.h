#pragma once

namespace platform {

class Dialogs;
class Navigation;
class Printers;
class RegistryStore;
class ReportControl;

/// The long-lived objects that every screen is handed at its construction. They outlive all screens.
struct Services {
    Dialogs& dialogs;
    Navigation& navigation;
    RegistryStore& registry;
    ReportControl& reports;
    Printers& printers;
};

} // namespace platform
