// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#ifndef MANIKINLOG_FILECHANGE_H
#define MANIKINLOG_FILECHANGE_H

class QFile;

namespace manikinlog {

/// What has become of a file that is read while somebody else writes it.
enum class FileChange {
    None, ///< its name is still that of the open file, which has all that was read of it
    Gone, ///< nothing has its name any more
    Replaced, ///< another file has its name
    Cut ///< it is shorter than what was read
};

/// Looks at the name of \a file, which is open. After any change nobody will write more of it.
FileChange changeOf(const QFile &file);

} // namespace manikinlog

#endif
