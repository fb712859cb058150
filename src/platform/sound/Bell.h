#pragma once
#include <QBuffer>
#include <memory>

class QAudioSink;

namespace platform {

/// The sound that calls a user, through the computer's loudspeaker; where there is none, the system's beep.
class Bell {
  public:
    Bell();
    ~Bell();
    /// Returns at once. While it still sounds it is not begun anew.
    void ring();

  private:
    QBuffer m_sound;
    std::unique_ptr<QAudioSink> m_sink;
};

} // namespace platform
