#pragma once

namespace desks {

/// What the main window shows of the system's server.
class SystemDesk {
  public:
    virtual ~SystemDesk() = default;
    /// The message does not wait any more.
    virtual void systemMessageWasRead() = 0;
};

} // namespace desks
