#pragma once
#include <QString>
#include <QStringMatcher>
#include <QStringView>
#include <vector>

namespace shop {

/// Records of named values, as the shop's server answers: one frame, any number of records in it, every value
/// in plain text between its opening and closing tag. Tags are found without regard to case.
///
/// What a record's values are is the shop's own rule: every search starts where the record before ended and
/// none stops at the end of the record, so that a value which a record lacks is the next record's, and one
/// that only lacks its opening tag begins with the text. Searched forward only: the time is in proportion to
/// the text, however it is made.
class TaggedText {
  public:
    /// `names` of the values, without brackets. The text outlives its reader.
    TaggedText(QStringView text, const std::vector<QString>& names);

    /// Whether there is a frame at all; the reader stands at it then.
    bool enterFrame();
    /// Whether another record begins.
    bool nextRecord();
    /// The value as it stands, nothing decoded or trimmed; throws kTypeMismatch where it does not end.
    QString value(int name);
    /// As a whole number of 32 bits; throws kTypeMismatch for anything else.
    qint64 wholeNumber(int name);
    double number(int name);
    /// Throws kTypeMismatch where the record has no end.
    void leaveRecord();

  private:
    class Tag {
      public:
        explicit Tag(const QString& written) : m_matcher(written, Qt::CaseInsensitive) {}

        qsizetype length() const { return m_matcher.pattern().size(); }

        /// Its first place from `position` on, -1 for none; positions only grow.
        qsizetype from(QStringView text, qsizetype position);

      private:
        QStringMatcher m_matcher;
        qsizetype m_searchedFrom = -1;
        qsizetype m_place = -1;
    };

    struct Pair {
        Tag opening, closing;
    };

    [[noreturn]] void fail(const QString& what) const;

    QStringView m_text;
    Tag m_frame;
    Pair m_record;
    std::vector<Pair> m_values;
    qsizetype m_position = 0;
    /// Counted from 1, for the log.
    qint64 m_recordNumber = 0;
    qsizetype m_taken = 0;
};

} // namespace shop
