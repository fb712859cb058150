#pragma once
#include <QObject>
#include <exception>
#include <functional>

namespace common {

/// Who started a piece of work. An error in a user's own action ends the program after the error box; an
/// error in a timer tick, a call or a server's answer shows the box once and is logged, and the program goes
/// on. Either way the transaction that it came out of has rolled itself back.
enum class Origin { User, Timer, Call, Answer };

/// Runs `action`; an exception out of it goes to the installed handler and never further, since an exception
/// must not travel through Qt's own frames (it leaves editors stuck and leaks). Nested calls: only the
/// outermost one handles, inner ones let the exception through, so that a procedure called from a guarded one
/// stops its caller as well. Returns false when an exception was handled.
bool guarded(Origin origin, const std::function<void()>& action);

/// The same for a stretch inside another action that stands by itself, such as the answer of a server in a
/// user's action that asked it: its error does not stop the action around it.
bool guardedApart(Origin origin, const std::function<void()>& action);

/// Held by whatever the work of others must not come across: an open transaction, an open work recordset. No
/// nested event loop may run meanwhile, which NestedEventLoop asserts.
class NoEventLoop {
  public:
    NoEventLoop();
    ~NoEventLoop();
    NoEventLoop(const NoEventLoop&) = delete;
    NoEventLoop& operator=(const NoEventLoop&) = delete;
};

/// Stands around a nested event loop (a modal dialog, a yield to the loop) inside a guarded action: what the
/// loop starts is guarded anew, since its exceptions must not travel through the loop's frames.
class NestedEventLoop {
  public:
    NestedEventLoop();
    ~NestedEventLoop();
    NestedEventLoop(const NestedEventLoop&) = delete;
    NestedEventLoop& operator=(const NestedEventLoop&) = delete;

  private:
    int m_depth;
};

/// The handler that the shell installs; a test installs its own. Without one an exception is rethrown.
using ErrorHandler = std::function<void(Origin, std::exception_ptr)>;
void setErrorHandler(ErrorHandler handler);
/// Gives an exception that was caught outside guarded to the handler; rethrows it without one.
void handleError(Origin origin, std::exception_ptr error);

/// Connects a signal to a handler that runs guarded. Every connection from a control, a timer, a call line or
/// a server goes through here.
template <typename Sender, typename Signal, typename Action>
QMetaObject::Connection connectGuarded(Origin origin, const Sender* sender, Signal signal,
                                       const QObject* context, Action action) {
    if constexpr (std::is_invocable_v<Action>) {
        return QObject::connect(sender, signal, context, [action, origin] { guarded(origin, action); });
    } else {
        return QObject::connect(sender, signal, context, [action, origin](const auto&... args) {
            guarded(origin, [&] { action(args...); });
        });
    }
}

} // namespace common
