#pragma once
#include "common/Guard.h"
#include <QApplication>

namespace shell {

/// The net below the guarded connections: an exception that got this far is handled like any other and does
/// not leave the event loop.
class GuardedApplication : public QApplication {
  public:
    using QApplication::QApplication;

    bool notify(QObject* receiver, QEvent* event) override {
        // Not guarded itself: it stands around every event, and what the events start has its own origin.
        try {
            return QApplication::notify(receiver, event);
        } catch (...) {
            common::handleError(common::Origin::User, std::current_exception());
            return true;
        }
    }
};

} // namespace shell
