#pragma once
#include <QString>
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
    /// Where a tag stands, in order; `next` is the first one that may be asked for yet, since whoever
    /// searches only goes on.
    struct Places {
        std::vector<qsizetype> all{};
        size_t next = 0;
    };

    /// The tags of a pair stand side by side, the closing one behind.
    enum Tag : int { kFrame = 0, kRecord = 1, kRecordEnd = 2, kFirstValue = 3 };

    void findTags();
    /// The tag's first place from the present position on, -1 for none.
    qsizetype placeOf(int tag);
    [[noreturn]] void fail(const QString& what) const;

    QStringView m_text;
    /// As written, in capitals.
    std::vector<QString> m_tags;
    std::vector<Places> m_places;
    qsizetype m_position = 0;
    /// Counted from 1, for the log.
    qint64 m_recordNumber = 0;
    qsizetype m_taken = 0;
};

} // namespace shop
