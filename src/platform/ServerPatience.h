#pragma once
#include <QString>
#include <functional>

namespace platform {

class Dialogs;

/// Does work that stores something, in a transaction of its own. Where no database server answers it is tried
/// again once one does, behind a dialog that tells so, and what is `meanwhile`; the user can give it up
/// (false). The work may be done again after an answer was lost, so it must not do anything twice.
bool untilServerAnswers(Dialogs& dialogs, const QString& meanwhile, const std::function<void()>& work);

} // namespace platform
