#pragma once

/// The settings of the firm: their way from memory into the store (store::LoadSystemSettings is the way
/// back).
namespace modEinstellungenSystem {

/// Writes the globals into the settings row. The version columns stay; without a row nothing is written.
void SaveSystemSettings();

/// End of the working day as the hour of the day, 0 to 23.
int FiktiverTagStunde();

} // namespace modEinstellungenSystem
