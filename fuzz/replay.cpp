// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

// Runs the fuzz target that it is linked with on every file of the given directories.

#include "Fuzzing.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <sys/resource.h>

#include <cstdio>

namespace {

constexpr qint64 maxMsecs = 2000;
// A sanitizer needs several times the memory of the program itself.
#if defined(__SANITIZE_ADDRESS__)
constexpr long maxMemoryKb = 1024L * 1024;
#else
constexpr long maxMemoryKb = 256L * 1024;
#endif

bool replay(const QString &name)
{
    std::printf("%s\n", qPrintable(name)); // before the run, since it may be the last line
    std::fflush(stdout);
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    const QByteArray input = file.readAll();
    QElapsedTimer timer;
    timer.start();
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(input.constData()),
                           static_cast<std::size_t>(input.size()));
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    std::printf("  %lld ms, %ld kB\n", timer.elapsed(), usage.ru_maxrss);
    return timer.elapsed() <= maxMsecs && usage.ru_maxrss <= maxMemoryKb;
}

} // namespace

int main(int argc, char *argv[])
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir directory(QString::fromLocal8Bit(argv[i]));
        for (const QString &name : directory.entryList(QDir::Files)) {
            if (!replay(directory.filePath(name)))
                return 1;
            ++count;
        }
    }
    std::printf("%d inputs\n", count);
    return count > 0 ? 0 : 1;
}
