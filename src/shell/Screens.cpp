#include "shell/Screens.h"
#include "orders/frmAuftragswesenAuftragserfassung.h"

namespace shell {

void registerScreens(ScreenRegistry& registry, const platform::Services& services,
                     telephony::PhoneBook& phoneBook) {
    registry.add(QStringLiteral("frmAuftragswesenAuftragserfassung"),
                 {.create = [services, &phoneBook](QWidget* parent) -> QWidget* {
                      return new frmAuftragswesenAuftragserfassung(services, phoneBook, parent);
                  },
                  .maximised = true});
}

} // namespace shell
