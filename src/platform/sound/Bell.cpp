#include "platform/sound/Bell.h"
#include <QApplication>
#include <QAudioDevice>
#include <QAudioSink>
#include <QMediaDevices>
#include <cmath>
#include <numbers>

namespace platform {
namespace {

constexpr int kRate = 44'100;

/// Two tones, the second a fifth above the first, each dying away.
QByteArray twoTones() {
    constexpr double kSeconds = 0.22, kLoudness = 0.6, kDecay = 9;
    QByteArray samples;
    for (const double hertz : {880.0, 1320.0})
        for (int i = 0; i < int(kSeconds * kRate); ++i) {
            const double t = double(i) / kRate;
            const double swing =
                kLoudness * std::exp(-kDecay * t) * std::sin(2 * std::numbers::pi * hertz * t);
            const auto sample = qint16(swing * 32'767);
            samples.append(reinterpret_cast<const char*>(&sample), sizeof sample);
        }
    return samples;
}

} // namespace

Bell::Bell() {
    m_sound.setData(twoTones());
    m_sound.open(QIODevice::ReadOnly);
}

Bell::~Bell() = default;

void Bell::ring() {
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull())
        return QApplication::beep();
    if (m_sink && m_sink->state() == QAudio::ActiveState)
        return;
    QAudioFormat format;
    format.setSampleRate(kRate);
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Int16);
    // Anew each time: the loudspeaker may have changed meanwhile.
    m_sink = std::make_unique<QAudioSink>(device, format);
    m_sound.seek(0);
    m_sink->start(&m_sound);
    if (m_sink->error() == QAudio::OpenError)
        QApplication::beep();
}

} // namespace platform
