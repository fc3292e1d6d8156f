#include "Program.h"

#include <QFile>

#include <vector>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

ProgramUsage runProgram(const QStringList& arguments) {
    std::vector<QByteArray> words = {QByteArray(VORTEL_PROGRAM)};
    for (const QString& argument : arguments) {
        words.push_back(QFile::encodeName(argument));
    }
    std::vector<char*> argv;
    for (QByteArray& word : words) {
        argv.push_back(word.data());
    }
    argv.push_back(nullptr);

    ProgramUsage usage;
    const pid_t child = fork();
    if (child == 0) {
        prctl(PR_SET_THP_DISABLE, 1, 0, 0, 0);
        dup2(open("/dev/null", O_WRONLY), STDOUT_FILENO);
        execv(argv.front(), argv.data());
        _exit(127);
    }
    int status = 0;
    rusage spent = {};
    if (child < 0 || wait4(child, &status, 0, &spent) != child) {
        return usage;
    }
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    usage.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    usage.cpuSeconds = seconds(spent.ru_utime) + seconds(spent.ru_stime);
    usage.peakMegabytes = static_cast<double>(spent.ru_maxrss) * 1024 / 1e6;
    return usage;
}
