#pragma once
// The file path of a job's configuration, set the way the framework sets a path the user
// picked: through the engine's own setter, on the primary or the secondary configuration.

#include "host/Utf8.h"
#include "tessel/core/AppError.h"
#include "tessel/jobs/CodePageText.h"

#include <string>

namespace tessel {

// Works with either engine. Throws a job AppError when the engine refuses the path, and a
// usage AppError when the configuration cannot name it (a character outside the code page).
template <typename Engine, typename Definition>
void SetPathThroughEngine(Engine& engine, Definition& definition, bool secondary, const std::string& path)
{
    const WString widePath = FromUtf8(path);
    const int accepted = CallEngine([&] {
        return secondary ? engine.SetSecondaryFilePath(&definition, widePath.c_str())
                         : engine.SetPrimaryFilePath(&definition, widePath.c_str());
    });
    if (!accepted)
        throw JobError("the engine did not take the file path '" + path + "'");
    const WString stored = CallEngine(
        [&] { return secondary ? engine.GetSecondaryFilePath(&definition) : engine.GetPrimaryFilePath(&definition); });
    if (stored != widePath)
        throw UsageError("'" + path + "': the configuration cannot name this path in code page " +
                         std::to_string(ModuleCodePage()) + " (choose another with --codepage)");
}

} // namespace tessel
