#pragma once
#include <QString>

/// The settings of the firm: their way from memory into the store (store::LoadSystemSettings is the way
/// back).
namespace modEinstellungenSystem {

/// Writes the globals into the settings row. The version columns stay; without a row nothing is written.
void SaveSystemSettings();

/// End of the working day as the hour of the day, 0 to 23.
int FiktiverTagStunde();

/// Fills the print tables with an invented order while they hold none, so that a slip can be looked at before
/// the first order was printed, and empties them again at its end. Tables that hold an order are not touched.
class SampleOrder {
  public:
    SampleOrder(const QString& werbetext, const QString& vatNummer);
    ~SampleOrder();
    SampleOrder(const SampleOrder&) = delete;
    SampleOrder& operator=(const SampleOrder&) = delete;

  private:
    bool m_filled = false;
};

} // namespace modEinstellungenSystem
