#pragma once
#include <QString>
#include <string_view>

/// How the store compares texts: without regard to case, umlauts included. For sorting an accented letter
/// stands with its base letter ("Müller" between "Muller" and "Mullis"), yet "ü" and "u" are not equal. All
/// texts are UTF-8. Nothing here throws: these run as callbacks of the engine.
namespace store {

/// Name under which the collation is registered on every connection.
inline constexpr const char* kCollationName = "GERMAN_CI";

/// Below 0, 0 or above 0.
int compareTexts(std::string_view a, std::string_view b) noexcept;
int compareTexts(const QString& a, const QString& b);

/// LIKE with "%" for any text and "_" for one character; `escape` (0 for none) takes the next character as it
/// is.
bool likeText(std::string_view pattern, std::string_view text, char32_t escape = 0) noexcept;

} // namespace store
