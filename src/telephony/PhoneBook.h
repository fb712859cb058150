#pragma once
#include "telephony/modVerwaltungTelefonbuch.h"
#include <optional>

namespace telephony {

/// The telephone directory as other screens ask it.
class PhoneBook {
  public:
    virtual ~PhoneBook() = default;
    /// Searches the number and shows the hits to pick from; says so when there is none. The picked row, or
    /// nothing.
    virtual std::optional<modVerwaltungTelefonbuch::PhoneBookEntry>
    FindPhoneBookEntry(const QString& number) = 0;
    /// The same by any of the fields; nothing happens when all are empty.
    virtual std::optional<modVerwaltungTelefonbuch::PhoneBookEntry>
    SearchPhoneBook(const modVerwaltungTelefonbuch::PhoneBookQuery& fields) = 0;
};

} // namespace telephony
