#include "common/Guard.h"
#include <utility>

namespace common {
namespace {
ErrorHandler theHandler;
int depth = 0;
int forbidden = 0;

struct Depth {
    Depth() { ++depth; }

    ~Depth() { --depth; }

    /// Nothing stands around what happens meanwhile.
    struct Apart {
        ~Apart() { depth = m_outer; }

        const int m_outer = std::exchange(depth, 0);
    };
};
} // namespace

NoEventLoop::NoEventLoop() {
    ++forbidden;
}

NoEventLoop::~NoEventLoop() {
    --forbidden;
}

NestedEventLoop::NestedEventLoop() : m_depth(std::exchange(depth, 0)) {
    Q_ASSERT_X(forbidden == 0, "NestedEventLoop", "a transaction or a work recordset is open");
}

NestedEventLoop::~NestedEventLoop() {
    depth = m_depth;
}

void setErrorHandler(ErrorHandler handler) {
    theHandler = std::move(handler);
}

void handleError(Origin origin, std::exception_ptr error) {
    if (!theHandler)
        std::rethrow_exception(error);
    theHandler(origin, std::move(error));
}

bool guarded(Origin origin, const std::function<void()>& action) {
    if (depth > 0 || !theHandler) {
        const Depth level;
        action();
        return true;
    }
    std::exception_ptr error;
    try {
        const Depth level;
        action();
    } catch (...) {
        error = std::current_exception();
    }
    if (error)
        theHandler(origin, error);
    return !error;
}

bool guardedApart(Origin origin, const std::function<void()>& action) {
    const Depth::Apart apart;
    return guarded(origin, action);
}

} // namespace common
