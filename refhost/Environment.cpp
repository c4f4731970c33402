#include "refhost/Environment.h"

#include "host/Utf8.h"
#include "refhost/FilePath.h"

#include <atomic>
#include <chrono>
#include <filesystem>
#include <random>
#include <system_error>

namespace refhost {

std::string MakeTempFolder(const std::string& prefix)
{
    std::error_code error;
    const std::filesystem::path base = std::filesystem::temp_directory_path(error);
    if (error)
        return "";
    static std::atomic<unsigned> counter{0};
    std::mt19937_64 random(std::random_device{}() ^
                           static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count()));
    for (int attempt = 0; attempt < 100; ++attempt) {
        const std::string name = prefix + std::to_string(random() % 1000000000) + "-" + std::to_string(counter++);
        const std::filesystem::path folder = base / PathFromUtf8(name);
        if (std::filesystem::create_directory(folder, error))
            return PathToUtf8(folder);
    }
    return "";
}

} // namespace refhost
