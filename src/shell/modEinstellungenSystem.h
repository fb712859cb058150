#pragma once

/// The settings of the firm: their way from memory into the store (store::LoadSystemSettings is the way
/// back).
namespace modEinstellungenSystem {

/// Writes the globals into the settings row. The version columns stay; without a row nothing is written.
void SaveSystemSettings();

} // namespace modEinstellungenSystem
