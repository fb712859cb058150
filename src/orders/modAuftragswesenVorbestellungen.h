#pragma once
#include "platform/Navigation.h"

/// Orders for a later day.
namespace modAuftragswesenVorbestellungen {

/// Writes the number of pre-orders to the main window's status box. Uses RsMain.
void UpdateVorbestellungCount(platform::Navigation& navigation);

} // namespace modAuftragswesenVorbestellungen
