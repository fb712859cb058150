#pragma once
#include "platform/report/ReportControl.h"
#include <optional>

namespace platform {

/// The printers of the system's print service.
class CupsPrinters : public Printers {
  public:
    QList<Printer> all() override;
    Printer defaultPrinter() override;

    void setDefaultPrinter(const Printer& printer) override { m_default = printer; }

  private:
    std::optional<Printer> m_default;
};

} // namespace platform
