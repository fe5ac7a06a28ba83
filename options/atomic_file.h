#pragma once
// Whole-file replacement for the files the option table writes from start to end. The new content
// goes to a file beside the target; once it is complete it is flushed to disk and renamed over the
// target in one step, so an interruption at any moment leaves either the old file or the new one,
// whole, never a part of one.
//
// Every close commits, whichever way the file is closed: through the file stack, by KvIni, by the
// destruction of the option table, or by the immediate end of the program (the numbered files are
// closed first, then the pending replacements are completed). Only a process killed mid-write
// leaves the old file as it was; a failed write keeps the old file and is reported to the writer.
//
// The file beside the target is named predictably (the target's name followed by ".grv~"): an
// interrupted write leaves at most one such file per target, and the next write to that target
// starts by replacing it, so they never pile up.

#include <cstdint>
#include <string>

namespace lumbra {

// The name the new content of fic is written under until it is complete.
std::string ReplacementName(const std::string& fic);

// Opens, under the free file number num, the file that is to become fic: its replacement file
// beside it, emptied. fic itself is opened instead (emptied, as mode "O" of FicAbr does) when it
// cannot be replaced by renaming: it is a device or another file that is not a plain file, or its
// folder refuses new files while fic itself can be written; and so is a name that names no file
// ("", or a folder's ending in a separator), whose open fails as the host's does and makes nothing.
// wrk = the name actually opened.
// ok = 1, or minus the error number; fic open under another number is refused with 55, as opening
// it for output would be.
void OpenForReplacement(std::int16_t num, const std::string& fic, std::string& wrk,
                        std::int16_t& ok);

// Puts the closed file wrk in the place of fic: wrk is flushed to disk, renamed over fic, and the
// folder's entry flushed as well. When err is not 0 on entry (a write failed) wrk is deleted and
// fic left as it was. err = 0, or the error number of the step that failed, in which case fic is
// left as it was. Nothing is renamed when wrk is fic itself (written in place).
void CompleteReplacement(const std::string& wrk, const std::string& fic, std::int16_t& err);

// The pending replacements: file number num, open under wrk, becomes fic once closed.
void HoldReplacement(std::int16_t num, const std::string& wrk, const std::string& fic);
// Remembers the first failed write to file num, so that its old file is kept at the close.
void NoteReplacementError(std::int16_t num, std::int16_t err);
// Completes the replacement of file num once it is closed: err = 0, or the error number of the
// write or of the completion that failed (the old file is then kept). A number that is not
// pending, or still open, gives 0 and is left alone.
std::int16_t FinishReplacement(std::int16_t num);

}  // namespace lumbra
