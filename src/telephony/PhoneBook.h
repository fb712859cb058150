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
};

} // namespace telephony
