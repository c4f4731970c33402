#include "AppTestSupport.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

extern char** environ;

namespace tessel {
namespace testing {
namespace {

std::string ReadAll(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return std::string((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

} // namespace

TesselRun RunTessel(const std::vector<std::string>& arguments, const std::string& folder)
{
    const std::string outPath = folder + "/.tessel-test-stdout";
    const std::string errPath = folder + "/.tessel-test-stderr";
    std::vector<std::string> words = {TESSEL_BINARY};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, outPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errPath.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    posix_spawn_file_actions_addchdir_np(&actions, folder.c_str());
    // Without a display: the tests script every answer, a dialog would wait for a person.
    std::vector<char*> environment;
    for (char** variable = environ; *variable; ++variable) {
        const std::string_view entry(*variable);
        if (entry.rfind("DISPLAY=", 0) != 0 && entry.rfind("WAYLAND_DISPLAY=", 0) != 0)
            environment.push_back(*variable);
    }
    environment.push_back(nullptr);
    pid_t child = 0;
    const int spawned = posix_spawn(&child, TESSEL_BINARY, &actions, nullptr, argv.data(), environment.data());
    posix_spawn_file_actions_destroy(&actions);
    if (spawned != 0)
        throw std::runtime_error("cannot start " + std::string(TESSEL_BINARY));
    int wait = 0;
    waitpid(child, &wait, 0);

    TesselRun run;
    run.status = WIFEXITED(wait) ? WEXITSTATUS(wait) : 128 + WTERMSIG(wait);
    run.out = ReadAll(outPath);
    run.err = ReadAll(errPath);
    unlink(outPath.c_str());
    unlink(errPath.c_str());
    return run;
}

ModuleHost& LoadedModule()
{
    static const std::unique_ptr<ModuleHost> module = [] {
        auto host = std::make_unique<ModuleHost>();
        host->Load(TESSEL_MODULE_PATH);
        return host;
    }();
    return *module;
}

std::string Utf16LeWithMark(const WString& text)
{
    std::string bytes = "\xFF\xFE";
    for (const WChar unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

std::vector<std::string> Lines(const std::string& text)
{
    std::vector<std::string> lines;
    std::string::size_type start = 0;
    while (start < text.size()) {
        const auto end = text.find('\n', start);
        lines.push_back(text.substr(start, end == std::string::npos ? std::string::npos : end - start));
        if (end == std::string::npos)
            break;
        start = end + 1;
    }
    return lines;
}

} // namespace testing
} // namespace tessel
