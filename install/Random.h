#pragma once
#include <QtGlobal>

namespace install {

/// A generator of our own, so that the same seed gives the same firm with every compiler and library.
class Random {
  public:
    explicit Random(quint64 seed) : m_state(seed) {}

    /// 0 to `limit` - 1.
    int below(int limit) { return int((next() >> 32) * quint64(limit) >> 32); }

    /// `least` to `most`, both included.
    int between(int least, int most) { return least + below(most - least + 1); }

    bool percent(int chance) { return below(100) < chance; }

    /// Small numbers come more often: some products and customers are more popular than others.
    int favouring(int limit) {
        const int one = below(limit);
        const int other = below(limit);
        return one < other ? one : other;
    }

  private:
    /// splitmix64.
    quint64 next() {
        m_state += 0x9e3779b97f4a7c15ULL;
        quint64 mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebULL;
        return mixed ^ (mixed >> 31);
    }

    quint64 m_state;
};

} // namespace install
