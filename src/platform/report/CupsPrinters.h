#pragma once
#include "platform/report/Reports.h"

namespace platform {

/// The printers of the system's print service.
class CupsPrinters : public Printers {
  public:
    QList<Printer> all() override;
    Printer defaultPrinter() override;
};

} // namespace platform
