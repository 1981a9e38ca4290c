// Prints the system-information rows of the benchmark table:
//   - the Linux description alone, and the whole job (dump file written, read
//     back, summary made, file removed), wall time on this machine;
//   - the longest gap between ticks of a 1 ms timer on the GUI thread while a
//     real GatherSysInfo runs on its own thread, wired as the window wires it,
//     against the same timer with no worker.
// Usage: bench_sysinfo [runs]

#include "bench/support/latenessprobe.h"
#include "sysinfo/gathersysinfo.h"
#include "sysinfo/linuxmachine.h"
#include "sysinfo/systemsummary.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QPointer>
#include <QTextStream>
#include <QThread>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <vector>

#include <unistd.h>

namespace {

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

// The job writes its section headers to stdout; they stay out of the table.
class QuietStdout
{
public:
    QuietStdout()
    {
        std::fflush(stdout);
        m_saved = dup(1);
        std::FILE *null = std::fopen("/dev/null", "w");
        dup2(fileno(null), 1);
        std::fclose(null);
    }
    ~QuietStdout()
    {
        std::fflush(stdout);
        dup2(m_saved, 1);
        close(m_saved);
    }

private:
    int m_saved;
};

// Runs the event loop with a precise 1 ms timer until `done` holds or timeout,
// and gives the longest gap between two ticks (or between start and first tick).
template <typename Done>
double longestGap(Done done, int timeoutMs)
{
    QEventLoop loop;
    LatenessProbe probe(1);
    probe.setOnTick([&] {
        if (done() || probe.elapsedMs() > timeoutMs)
            loop.quit();
    });
    probe.start();
    loop.exec();
    return probe.worstGapMs();
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    const int runs = argc > 1 ? std::max(1, atoi(argv[1])) : 15;

    std::vector<double> describe;
    std::vector<double> job;
    {
        QuietStdout quiet;
        for (int i = 0; i < runs; ++i) {
            QElapsedTimer t;
            t.start();
            std::unique_ptr<MemoryContainer> root = makeLinuxMachineRoot();
            describe.push_back(t.nsecsElapsed() / 1e6);

            QString summary;
            QTextStream out(&summary, QIODevice::ReadWrite);
            t.restart();
            writeSystemSummary(out);
            out.flush();
            job.push_back(t.nsecsElapsed() / 1e6);
        }
    }

    std::vector<double> busyGaps;
    std::vector<double> idleGaps;
    std::vector<double> workerTimes;
    {
        QuietStdout quiet;
        for (int i = 0; i < runs; ++i) {
            auto *worker = new GatherSysInfo;
            bool arrived = false;
            QObject::connect(worker, &GatherSysInfo::results, &app, [&arrived](const QString &) { arrived = true; });
            QPointer<QThread> alive;
            QElapsedTimer t;
            t.start();
            // Start from inside the loop, so the first tick measures from a running loop.
            QTimer::singleShot(0, &app, [worker, &alive] { alive = GatherSysInfo::startOnOwnThread(worker); });
            busyGaps.push_back(longestGap([&] { return arrived && alive.isNull(); }, 10000));
            workerTimes.push_back(t.nsecsElapsed() / 1e6);
            idleGaps.push_back(longestGap([] { return false; }, int(std::max(5.0, workerTimes.back()))));
        }
    }

    std::printf(
        "| sysinfo: Linux machine description | %.2f | ms (median of %d) | makeLinuxMachineRoot on this machine |\n",
        median(describe), runs);
    std::printf("| sysinfo: whole job, description + dump file + summary | %.2f | ms (median of %d) | "
                "writeSystemSummary, file in TMPDIR |\n",
                median(job), runs);
    std::printf("| sysinfo: worker start to thread deleted | %.2f | ms (median of %d) | GatherSysInfo on its QThread, "
                "window's wiring |\n",
                median(workerTimes), runs);
    std::printf("| sysinfo: longest GUI-thread stall while the worker runs | %.2f | ms (worst of %d; median %.2f) | "
                "1 ms precise QTimer on the GUI thread |\n",
                *std::max_element(busyGaps.begin(), busyGaps.end()), runs, median(busyGaps));
    std::printf("| sysinfo: longest GUI-thread stall, no worker | %.2f | ms (worst of %d; median %.2f) | same timer, "
                "same span |\n",
                *std::max_element(idleGaps.begin(), idleGaps.end()), runs, median(idleGaps));
    return 0;
}
