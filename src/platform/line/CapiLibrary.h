#pragma once
#include <QByteArray>
#include <QLibrary>
#include <chrono>
#include <optional>

struct timeval;

namespace platform::capi {

/// The system's CAPI 2.0 library, loaded at run time, since only machines with ISDN hardware have it; and our
/// one application at it.
class Library {
  public:
    /// Throws common::RunTimeError when the library is not there.
    Library();
    /// Ends the application.
    ~Library();
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    /// Whether a controller stands behind it.
    bool isInstalled() const;
    /// Registers the application, anew if it was. Throws common::RunTimeError. With a CAPI in the network it
    /// waits for that one's answer.
    void open();
    void close();

    quint16 application() const { return quint16(m_application); }

    quint16 controllers() const;
    /// Readable when a message waits; -1 when closed.
    int descriptor() const;
    bool put(QByteArray message);
    /// The next message, waiting for it for at most `limit`. Nothing when none came; isLost() tells whether
    /// one can still come.
    std::optional<QByteArray> get(std::chrono::milliseconds limit = {});

    bool isLost() const { return m_isLost; }

  private:
    template <typename Function> void resolve(Function& function, const char* name);

    QLibrary m_library;
    unsigned m_application = 0;
    bool m_isLost = false;
    int m_falseAlarms = 0;

    unsigned (*m_isInstalled)() = nullptr;
    unsigned (*m_register)(unsigned, unsigned, unsigned, unsigned*) = nullptr;
    unsigned (*m_release)(unsigned) = nullptr;
    unsigned (*m_put)(unsigned, unsigned char*) = nullptr;
    unsigned (*m_get)(unsigned, unsigned char**) = nullptr;
    unsigned (*m_wait)(unsigned, timeval*) = nullptr;
    unsigned (*m_profile)(unsigned, unsigned char*) = nullptr;
    int (*m_fileno)(unsigned) = nullptr;
};

} // namespace platform::capi
