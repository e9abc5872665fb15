// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "sessionlibrary/ArchiveFolder.h"

#include "private/FileCalls.h"

#include <dirent.h>
#include <strings.h>

namespace sessionlibrary {

namespace {

FileStamp stampOf(const struct stat &status)
{
    constexpr qint64 nsPerSecond = 1'000'000'000;
    if (!S_ISREG(status.st_mode))
        return {};
    return {qint64(status.st_size),
            qint64(status.st_mtim.tv_sec) * nsPerSecond + status.st_mtim.tv_nsec,
            qint64(status.st_ino)};
}

bool isArchiveName(const char *name)
{
    constexpr std::size_t suffixSize = 4;
    const std::size_t size = std::strlen(name);
    return size > suffixSize && ::strcasecmp(name + size - suffixSize, ".zip") == 0;
}

/// Walks through a folder with the calls of the system: of 10,000 files each costs one call.
class Walk {
public:
    Walk(ArchiveList &list, const std::function<bool()> &isCancelled)
        : m_list(list), m_isCancelled(isCancelled)
    {
    }

    // Closes \a descriptor. \a prefix is the folder's relative name, with a / at its end.
    void into(int descriptor, const QByteArray &prefix)
    {
        DIR *directory = descriptor < 0 ? nullptr : ::fdopendir(descriptor);
        if (!directory) {
            leaveOut(prefix);
            if (descriptor >= 0)
                ::close(descriptor);
            return;
        }
        std::vector<QByteArray> below;
        for (;;) {
            errno = 0;
            const dirent *entry = ::readdir(directory);
            if (!entry) {
                if (errno != 0)
                    leaveOut(prefix);
                break;
            }
            if (entry->d_name[0] != '.')
                look(descriptor, *entry, prefix, below);
        }
        for (const QByteArray &name : below) {
            m_list.isCancelled = m_list.isCancelled || (m_isCancelled && m_isCancelled());
            if (m_list.isCancelled)
                break;
            const int child = FileCalls::repeated([&] {
                return ::openat(descriptor, name.constData(),
                                O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            });
            if (child >= 0 || errno != ENOENT)
                into(child, prefix + name + '/');
        }
        ::closedir(directory);
        m_list.folders.append(QFile::decodeName(prefix));
    }

private:
    void look(int directory, const dirent &entry, const QByteArray &prefix,
              std::vector<QByteArray> &below)
    {
        const bool mayBeFolder = entry.d_type == DT_DIR || entry.d_type == DT_UNKNOWN;
        const bool isArchive = isArchiveName(entry.d_name) && entry.d_type != DT_DIR;
        if (!isArchive && !mayBeFolder)
            return;
        struct stat status { };
        if (isArchive && ::fstatat(directory, entry.d_name, &status, 0) == 0
            && S_ISREG(status.st_mode))
            m_list.files.push_back({QFile::decodeName(prefix + entry.d_name), stampOf(status)});
        else if (entry.d_type == DT_DIR
                 || (entry.d_type == DT_UNKNOWN
                     && ::fstatat(directory, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0
                     && S_ISDIR(status.st_mode)))
            below.emplace_back(entry.d_name);
    }

    void leaveOut(const QByteArray &prefix)
    {
        m_list.unreadable.append(QFile::decodeName(prefix));
        m_list.reasons.append(FileCalls::reason());
    }

    ArchiveList &m_list;
    const std::function<bool()> &m_isCancelled;
};

} // namespace

FileStamp stampOf(const QString &path)
{
    struct stat status { };
    return ::stat(QFile::encodeName(path).constData(), &status) == 0 ? stampOf(status)
                                                                     : FileStamp();
}

ArchiveList archivesIn(const QString &folder, const std::function<bool()> &isCancelled)
{
    ArchiveList list;
    const QByteArray name = QFile::encodeName(folder);
    const int descriptor = FileCalls::repeated(
        [&name] { return ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    Walk(list, isCancelled).into(descriptor, {});
    for (QString &relative : list.folders)
        relative = relative.isEmpty() ? folder : folder + QLatin1Char('/') + relative.chopped(1);
    return list;
}

} // namespace sessionlibrary
