#pragma once
#include <QStringList>
#include <array>
#include <vector>

namespace shell {

/// A right that a user may have: its row in the list of rights, its column in the table of users, the flag of
/// the user logged in, and what it opens. The log-in, the menu and the users' screen live on this table.
struct Right {
    const char* text;
    const char16_t* column;
    qint16& user;
    std::vector<const char*> entries;
    /// Screens that no entry of the menu leads to.
    QStringList screens = {};
};

constexpr size_t kRights = 7;
/// Row of the right that means all others.
constexpr size_t kAdministrator = 0;

/// In the order of the list.
const std::array<Right, kRights>& rights();

} // namespace shell
