// SPDX-License-Identifier: MIT
// Copyright (c) 2026 The libCPRData authors

#include "support/Program.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace testsupport {

Answer run(const QString &program, const QStringList &arguments, const QString &folder,
           const QProcessEnvironment &environment)
{
    QProcess process;
    process.setWorkingDirectory(folder);
    process.setProcessEnvironment(environment);
    process.start(program, arguments);
    Answer answer;
    if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit)
        answer.status = process.exitCode();
    answer.output = process.readAllStandardOutput();
    answer.errors = process.readAllStandardError();
    return answer;
}

Ended runInChild(const std::function<int()> &work)
{
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    rusage usage{};
    wait4(child, &status, 0, &usage);
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1,
            double(usage.ru_utime.tv_sec) + double(usage.ru_utime.tv_usec) / 1e6,
            double(usage.ru_maxrss) / 1024};
}

int seeds(int usual)
{
    bool isSet = false;
    const int wanted = qEnvironmentVariableIntValue("CPRDATA_SEEDS", &isSet);
    return isSet ? wanted : usual;
}

} // namespace testsupport
