#pragma once
#include <QLockFile>
#include <QString>

namespace shell {

/// The file in the program's folder that keeps a second program off the same data. It counts as long as its
/// owner lives, and goes with this object.
class InstanceLock {
  public:
    enum class State {
        Taken,
        /// The folder cannot be written; nothing is held.
        Unwritable,
        /// Another program on this computer lives and holds it, maybe another user's.
        RunsHere,
        /// Another computer left it, or holds it still: which one cannot be told from here.
        HeldElsewhere,
        /// Something that is no lock file of ours stands in its place.
        InTheWay,
    };

    explicit InstanceLock(const QString& file);

    State take();
    /// Replaces what take() found, after the owner has said that nobody else is there. Where it cannot be
    /// replaced nothing is held, and the state is again the one found. RunsHere: somebody was quicker.
    State takeOver();
    /// The computer that the lock names; "" without one.
    QString computer() const;

    const QString& file() const { return m_file; }

    void release() { m_lock.unlock(); }

  private:
    QString m_file;
    mutable QLockFile m_lock;
};

} // namespace shell
