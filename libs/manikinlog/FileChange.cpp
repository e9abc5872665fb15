// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "manikinlog/FileChange.h"

#include "private/FileCalls.h"

namespace manikinlog {

FileChange changeOf(const QFile &file)
{
    struct stat named { };
    struct stat opened { };
    if (::stat(QFile::encodeName(file.fileName()).constData(), &named) != 0)
        return FileChange::Gone;
    if (::fstat(file.handle(), &opened) != 0 || named.st_dev != opened.st_dev
        || named.st_ino != opened.st_ino)
        return FileChange::Replaced;
    return opened.st_size < file.pos() ? FileChange::Cut : FileChange::None;
}

} // namespace manikinlog
