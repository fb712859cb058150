#pragma once
#include "platform/Services.h"
#include "telephony/PhoneBook.h"

namespace shell {

/// Asks the telephone directory for any screen that needs an address.
class PhoneBookSearch : public telephony::PhoneBook {
  public:
    explicit PhoneBookSearch(const platform::Services& services) : m_services(services) {}

    std::optional<modVerwaltungTelefonbuch::PhoneBookEntry>
    FindPhoneBookEntry(const QString& number) override;
    std::optional<modVerwaltungTelefonbuch::PhoneBookEntry>
    SearchPhoneBook(const modVerwaltungTelefonbuch::PhoneBookQuery& fields) override;

  private:
    std::optional<modVerwaltungTelefonbuch::PhoneBookEntry> pick(const QString& sql);

    platform::Services m_services;
};

} // namespace shell
