#pragma once
#include "platform/line/TelephoneLine.h"

namespace platform {

/// A line that cannot be made out: Start throws and tells why.
class NoLine : public BasicCAPI32 {
    Q_OBJECT
  public:
    explicit NoLine(const QString& reason, QObject* parent = nullptr);

    bool IsAvailable() override { return false; }

    void Start() override;

    void Stop() override {}

  private:
    QString m_reason;
};

} // namespace platform
