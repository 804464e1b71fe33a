#pragma once

#include "store/Alarm.h"

#include <optional>

namespace nordkeep {

// The file of one event. All numbers are little-endian; a text is its length in two bytes and then its
// bytes. There is no padding, no magic number and no version:
//
//   record length (4), status, repeated (2 each), event time, acknowledge time, arrival time (8 each), 20
//   texts from m_AlarmCodeToStore to m_User, sent-to-Torvex (2), the small comment at its fixed width, 5
//   texts, alarm number (4), 3 texts.
//
// What stands behind the record is left from a longer one and means nothing.

/// The bytes of a record. The first four hold the place behind the last byte, counted from 1, less
/// `filePointer`; event files are written with 0. The small comment is cut or filled to `smallCommentSize`
/// characters (0 to 128); other texts are cut at 65535.
Text EventBytes(const cAlarm& alarm, std::int32_t filePointer, int smallCommentSize);

/// Reads the record that begins at `filePointer` (counted from 1) of a file's content, notes that place in
/// m_FilePointer, and gives the length that stands in front of the record. None when the content ends before
/// the record does; the record is then filled only in part.
std::optional<std::int32_t> ReadFromDisk(TextView content, std::int64_t filePointer, cAlarm& alarm);

/// True for a file that holds no event although it can be long enough for one: a power cut can leave a file
/// of nothing but zeros.
bool IsBlankFile(TextView content);

}  // namespace nordkeep
