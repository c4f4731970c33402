#include "host/CadPlatform.h"
#include "refhost/CadShimRecording.h"

#include <algorithm>
#include <map>

namespace {

struct FunctionTable {
    std::vector<CadShim::FunctionDefinition> defined; // acedDefun
    std::map<int, int (*)()> registered;              // acedRegFunc
    int currentCode = -1;                             // for acedGetFunCode
};

FunctionTable& Table()
{
    static FunctionTable table;
    return table;
}

} // namespace

int acedRegFunc(int (*function)(), int functionCode)
{
    if (function)
        Table().registered[functionCode] = function;
    else
        Table().registered.erase(functionCode);
    return RTNORM;
}

int acedDefun(const WChar* name, int functionCode)
{
    if (!name || !*name)
        return RTERROR;
    auto& defined = Table().defined;
    const auto found = std::find_if(defined.begin(), defined.end(),
                                    [name](const CadShim::FunctionDefinition& entry) { return entry.name == name; });
    if (found != defined.end())
        found->code = functionCode;
    else
        defined.push_back({name, functionCode});
    return RTNORM;
}

int acedUndef(const WChar* name, int functionCode)
{
    if (!name)
        return RTERROR;
    auto& defined = Table().defined;
    const auto found = std::find_if(defined.begin(), defined.end(), [&](const CadShim::FunctionDefinition& entry) {
        return entry.name == name && entry.code == functionCode;
    });
    if (found == defined.end())
        return RTERROR;
    defined.erase(found);
    return RTNORM;
}

int acedGetFunCode() { return Table().currentCode; }

namespace CadShim {

const std::vector<FunctionDefinition>& DefinedFunctions() { return Table().defined; }

int InvokeFunction(int functionCode)
{
    Table().currentCode = functionCode;
    const auto found = Table().registered.find(functionCode);
    return found == Table().registered.end() ? RTERROR : found->second();
}

} // namespace CadShim
