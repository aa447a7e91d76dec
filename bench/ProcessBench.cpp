// Times whole processes: each command is started N times, the commands
// interleaved (A, B, A, B, ...) so that drift of the machine affects all of
// them alike, and for each the wall time from spawn to exit, the processor
// time (user and system, from wait4), the peak resident set (ru_maxrss) and,
// for a program that reports it, the time from spawn to its first frame on
// screen and the processor time it took to get there are summarised. A
// program reports its first frame by writing the line
// "first-frame-monotonic-ns N cpu-ns C" (N: CLOCK_MONOTONIC in nanoseconds
// at that frame; C: its CLOCK_PROCESS_CPUTIME_ID then) to its standard
// output.
//
//   process_bench [--runs N] [--warmup K] [--timeout SECONDS] [--json FILE]
//                 --name NAME [--fresh-dir VAR] -- COMMAND [ARGS...]
//                 [::: --name NAME [--fresh-dir VAR] -- COMMAND [ARGS...]] ...
//
// --fresh-dir VAR gives every run of that command a new empty directory in
// the environment variable VAR (removed afterwards). Each child runs in its
// own process group with its output going to a scratch file; a child still
// running after the timeout is killed with its group and counts as failed,
// as does a non-zero exit. The end of the output of each command's first
// failure is shown.
//
// The summary is printed as a table; --json FILE also writes it to FILE,
// one JSON object per command and line.
#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <spawn.h>
#include <string>
#include <string_view>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern char** environ;

namespace {

struct Command {
    std::string name;
    std::string freshDirVariable; // empty: no per-run directory
    std::vector<std::string> argv;
};

struct Options {
    int runs = 10;
    int warmup = 0;
    double timeoutSeconds = 30;
    std::string jsonPath; // empty: table only
    std::vector<Command> commands;
};

struct Run {
    bool ok = false;
    double wallMs = 0;
    double cpuMs = 0;
    double firstFrameMs = -1;    // -1: not reported
    double firstFrameCpuMs = -1; // the same
    double peakRssMb = 0;        // megabytes of 10^6 bytes
    std::string failure;         // why it failed, with the end of its output
};

[[noreturn]] void usage(const std::string& problem)
{
    std::cerr << "process_bench: " << problem << "\n"
              << "usage: process_bench [--runs N] [--warmup K] [--timeout SECONDS] [--json FILE]\n"
                 "                     --name NAME [--fresh-dir VAR] -- COMMAND [ARGS...]\n"
                 "                     [::: --name NAME [--fresh-dir VAR] -- COMMAND ...] ...\n";
    std::exit(2);
}

template <typename Number> Number parseNumber(const std::string& text, const char* option)
{
    Number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        usage(std::string(option) + " takes a number, not \"" + text + "\"");
    return value;
}

Options parseArguments(int argc, char** argv)
{
    Options options;
    std::vector<std::string> args(argv + 1, argv + argc);
    std::size_t i = 0;
    const auto value = [&](const char* option) -> const std::string& {
        if (i + 1 >= args.size())
            usage(std::string(option) + " needs a value");
        return args[++i];
    };
    // Global options come first, up to the first --name.
    for (; i < args.size() && args[i] != "--name"; ++i) {
        if (args[i] == "--runs")
            options.runs = parseNumber<int>(value("--runs"), "--runs");
        else if (args[i] == "--warmup")
            options.warmup = parseNumber<int>(value("--warmup"), "--warmup");
        else if (args[i] == "--timeout")
            options.timeoutSeconds = parseNumber<double>(value("--timeout"), "--timeout");
        else if (args[i] == "--json")
            options.jsonPath = value("--json");
        else
            usage("unknown option " + args[i]);
    }
    while (i < args.size()) {
        Command command;
        for (; i < args.size() && args[i] != "--"; ++i) {
            if (args[i] == "--name")
                command.name = value("--name");
            else if (args[i] == "--fresh-dir")
                command.freshDirVariable = value("--fresh-dir");
            else
                usage("unknown command option " + args[i]);
        }
        for (++i; i < args.size() && args[i] != ":::"; ++i)
            command.argv.push_back(args[i]);
        ++i; // past ":::"
        if (command.name.empty() || command.argv.empty())
            usage("every command needs --name NAME -- COMMAND");
        options.commands.push_back(std::move(command));
    }
    if (options.commands.empty())
        usage("no command given");
    if (options.runs < 1 || options.runs > 10000 || options.warmup < 0 || options.warmup > 100)
        usage("--runs takes 1 to 10000, --warmup 0 to 100");
    if (!(options.timeoutSeconds > 0))
        usage("--timeout must be positive");
    return options;
}

double secondsSince(const timespec& start)
{
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return double(now.tv_sec - start.tv_sec) + double(now.tv_nsec - start.tv_nsec) * 1e-9;
}

// The last `count` lines of the file at `path`, indented.
std::string tailOfFile(const std::string& path, std::size_t count)
{
    std::ifstream in(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) {
        lines.push_back(std::move(line));
        if (lines.size() > count)
            lines.erase(lines.begin());
    }
    std::string text;
    for (const std::string& line : lines)
        text += "    " + line + "\n";
    return text;
}

// The environment of the child: ours, with `variable` set to `value`.
std::vector<std::string> childEnvironment(const std::string& variable, const std::string& value)
{
    std::vector<std::string> env;
    for (char** entry = environ; *entry; ++entry) {
        if (variable.empty() || std::strncmp(*entry, (variable + "=").c_str(), variable.size() + 1))
            env.emplace_back(*entry);
    }
    if (!variable.empty())
        env.push_back(variable + "=" + value);
    return env;
}

std::vector<char*> pointers(std::vector<std::string>& strings)
{
    std::vector<char*> result;
    for (std::string& s : strings)
        result.push_back(s.data());
    result.push_back(nullptr);
    return result;
}

double milliseconds(const timeval& time)
{
    return double(time.tv_sec) * 1e3 + double(time.tv_usec) / 1e3;
}

struct FirstFrame {
    long long monotonicNs = 0; // 0: not reported
    long long cpuNs = 0;
};

// The first "first-frame-monotonic-ns N cpu-ns C" line of the output. Only
// the first 64 kB are read: the line comes early, and the output may be
// large.
FirstFrame reportedFirstFrame(const std::string& path)
{
    std::ifstream file(path);
    std::string line;
    const std::string key = "first-frame-monotonic-ns ";
    const std::string cpuKey = " cpu-ns ";
    std::size_t read = 0;
    FirstFrame frame;
    while (read < 65536 && std::getline(file, line)) {
        read += line.size() + 1;
        if (line.compare(0, key.size(), key) != 0)
            continue;
        const char* end = line.data() + line.size();
        const auto number = std::from_chars(line.data() + key.size(), end, frame.monotonicNs);
        if (std::string_view(number.ptr, end - number.ptr).substr(0, cpuKey.size()) == cpuKey)
            std::from_chars(number.ptr + cpuKey.size(), end, frame.cpuNs);
        break;
    }
    return frame;
}

// Starts `command` once and waits for it, at most `timeoutSeconds`.
// SIGCHLD is blocked in this process, so sigtimedwait() wakes up the moment
// the child exits and the measured wall time carries no polling delay.
Run runOnce(const Command& command, double timeoutSeconds, const std::string& outputPath)
{
    Run run;
    std::string freshDir;
    if (!command.freshDirVariable.empty()) {
        std::string pattern =
            (std::filesystem::temp_directory_path() / "process-bench-XXXXXX").string();
        if (!mkdtemp(pattern.data())) {
            run.failure = std::string("mkdtemp: ") + std::strerror(errno);
            return run;
        }
        freshDir = pattern;
    }
    std::vector<std::string> env = childEnvironment(command.freshDirVariable, freshDir);
    std::vector<std::string> args = command.argv;
    std::vector<char*> envp = pointers(env);
    std::vector<char*> argp = pointers(args);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outputPath.c_str(),
                                     O_WRONLY | O_CREAT | O_TRUNC, 0600);
    posix_spawn_file_actions_adddup2(&actions, STDOUT_FILENO, STDERR_FILENO);
    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    sigset_t empty;
    sigemptyset(&empty);
    posix_spawnattr_setsigmask(&attributes, &empty);
    posix_spawnattr_setpgroup(&attributes, 0);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);

    timespec start{};
    clock_gettime(CLOCK_MONOTONIC, &start);
    pid_t pid = 0;
    const int spawnError =
        posix_spawnp(&pid, argp[0], &actions, &attributes, argp.data(), envp.data());
    posix_spawn_file_actions_destroy(&actions);
    posix_spawnattr_destroy(&attributes);
    if (spawnError != 0) {
        run.failure = "cannot start " + command.argv[0] + ": " + std::strerror(spawnError);
        if (!freshDir.empty())
            std::filesystem::remove_all(freshDir);
        return run;
    }

    sigset_t childSignal;
    sigemptyset(&childSignal);
    sigaddset(&childSignal, SIGCHLD);
    int status = 0;
    rusage usage{};
    bool timedOut = false;
    int waitError = 0;
    // Each pass either reaps the child or waits for the next SIGCHLD; the
    // deadline ends the loop in any case.
    for (;;) {
        const pid_t done = wait4(pid, &status, WNOHANG, &usage);
        if (done < 0 && errno != EINTR)
            waitError = errno;
        if (done == pid || waitError)
            break;
        const double left = timeoutSeconds - secondsSince(start);
        if (left <= 0) {
            timedOut = true;
            break;
        }
        timespec wait{};
        wait.tv_sec = time_t(left);
        wait.tv_nsec = long((left - double(wait.tv_sec)) * 1e9);
        sigtimedwait(&childSignal, nullptr, &wait);
    }
    run.wallMs = secondsSince(start) * 1000.0;
    if (waitError) {
        run.failure = std::string("wait4: ") + std::strerror(waitError);
    } else if (timedOut) {
        kill(-pid, SIGKILL);
        wait4(pid, &status, 0, &usage);
        char text[64];
        std::snprintf(text, sizeof text, "killed after %g s", timeoutSeconds);
        run.failure = text;
    } else if (WIFEXITED(status) && WEXITSTATUS(status) == 0) {
        run.ok = true;
    } else if (WIFEXITED(status)) {
        run.failure = "exit code " + std::to_string(WEXITSTATUS(status));
    } else {
        run.failure = std::string("killed by signal ") + strsignal(WTERMSIG(status));
    }
    if (const std::string output = tailOfFile(outputPath, 20); !run.ok && !output.empty())
        run.failure += "; its output ends:\n" + output;
    run.peakRssMb = double(usage.ru_maxrss) * 1024.0 / 1e6; // ru_maxrss is in KiB
    run.cpuMs = milliseconds(usage.ru_utime) + milliseconds(usage.ru_stime);
    if (const FirstFrame frame = reportedFirstFrame(outputPath); frame.monotonicNs > 0) {
        run.firstFrameMs =
            double(frame.monotonicNs - (start.tv_sec * 1000000000LL + start.tv_nsec)) / 1e6;
        if (frame.cpuNs > 0)
            run.firstFrameCpuMs = double(frame.cpuNs) / 1e6;
    }
    if (!freshDir.empty())
        std::filesystem::remove_all(freshDir);
    return run;
}

double median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const std::size_t n = values.size();
    return n % 2 ? values[n / 2] : (values[n / 2 - 1] + values[n / 2]) / 2;
}

std::string jsonString(const std::string& text)
{
    std::string quoted = "\"";
    for (char c : text) {
        if (c == '"' || c == '\\')
            quoted += '\\';
        if (c == '\n')
            quoted += "\\n";
        else if (static_cast<unsigned char>(c) >= 0x20)
            quoted += c;
    }
    return quoted + "\"";
}

} // namespace

int main(int argc, char** argv)
{
    const Options options = parseArguments(argc, argv);

    sigset_t childSignal;
    sigemptyset(&childSignal);
    sigaddset(&childSignal, SIGCHLD);
    sigprocmask(SIG_BLOCK, &childSignal, nullptr);

    std::string outputPath =
        (std::filesystem::temp_directory_path() / "process-bench-output-XXXXXX").string();
    const int outputFile = mkstemp(outputPath.data());
    if (outputFile < 0) {
        std::cerr << "process_bench: mkstemp: " << std::strerror(errno) << "\n";
        return 2;
    }
    close(outputFile);

    std::vector<std::vector<Run>> runs(options.commands.size());
    for (int round = 0; round < options.warmup + options.runs; ++round) {
        for (std::size_t c = 0; c < options.commands.size(); ++c) {
            Run run = runOnce(options.commands[c], options.timeoutSeconds, outputPath);
            if (round >= options.warmup || !run.ok)
                runs[c].push_back(std::move(run));
        }
    }
    std::filesystem::remove(outputPath);

    std::ofstream json;
    if (!options.jsonPath.empty()) {
        json.open(options.jsonPath);
        if (!json) {
            std::cerr << "process_bench: cannot write " << options.jsonPath << "\n";
            return 2;
        }
    }
    bool allOk = true;
    std::printf("%-28s %5s %10s %10s %10s %10s %10s %10s %10s %10s\n", "command", "runs",
                "median ms", "min ms", "max ms", "cpu ms", "frame ms", "frame cpu", "median MB",
                "max MB");
    for (std::size_t c = 0; c < options.commands.size(); ++c) {
        std::vector<double> wall;
        std::vector<double> cpu;
        std::vector<double> frame; // of the runs that reported one
        std::vector<double> frameCpu;
        std::vector<double> rss;
        std::string firstFailure;
        double failedRss = 0; // the largest peak of the failed runs
        for (const Run& run : runs[c]) {
            if (run.ok) {
                wall.push_back(run.wallMs);
                cpu.push_back(run.cpuMs);
                if (run.firstFrameMs >= 0)
                    frame.push_back(run.firstFrameMs);
                if (run.firstFrameCpuMs >= 0)
                    frameCpu.push_back(run.firstFrameCpuMs);
                rss.push_back(run.peakRssMb);
                continue;
            }
            if (firstFailure.empty())
                firstFailure = run.failure;
            failedRss = std::max(failedRss, run.peakRssMb);
        }
        const std::size_t failed = runs[c].size() - wall.size();
        allOk = allOk && failed == 0;
        const double minWall = wall.empty() ? 0 : *std::min_element(wall.begin(), wall.end());
        const double maxWall = wall.empty() ? 0 : *std::max_element(wall.begin(), wall.end());
        const double maxRss = rss.empty() ? 0 : *std::max_element(rss.begin(), rss.end());
        const std::string& name = options.commands[c].name;
        const double frameMedian = frame.empty() ? -1 : median(frame);
        const double frameCpuMedian = frameCpu.empty() ? -1 : median(frameCpu);
        std::printf("%-28s %5zu %10.2f %10.2f %10.2f %10.2f %10.2f %10.2f %10.1f %10.1f\n",
                    name.c_str(), wall.size(), median(wall), minWall, maxWall, median(cpu),
                    frameMedian, frameCpuMedian, median(rss), maxRss);
        if (json.is_open()) {
            char line[512];
            std::snprintf(line, sizeof line,
                          "\"runs\": %zu, \"failed\": %zu, \"wall_median_ms\": %.3f, "
                          "\"wall_min_ms\": %.3f, \"wall_max_ms\": %.3f, \"cpu_median_ms\": %.3f, "
                          "\"first_frame_median_ms\": %.3f, \"first_frame_runs\": %zu, "
                          "\"first_frame_cpu_median_ms\": %.3f, "
                          "\"rss_median_mb\": %.2f, \"rss_max_mb\": %.2f, "
                          "\"failed_rss_max_mb\": %.2f",
                          wall.size(), failed, median(wall), minWall, maxWall, median(cpu),
                          frameMedian, frame.size(), frameCpuMedian, median(rss), maxRss,
                          failedRss);
            json << "{\"name\": " << jsonString(name) << ", " << line
                 << ", \"failure\": " << jsonString(firstFailure) << "}\n";
        }
        if (failed > 0)
            std::fprintf(stderr, "process_bench: %s failed %zu time(s), first: %s\n", name.c_str(),
                         failed, firstFailure.c_str());
    }
    return allOk ? 0 : 1;
}
