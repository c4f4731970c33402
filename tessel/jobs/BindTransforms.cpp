#include "tessel/jobs/BindTransforms.h"

#include "host/GisUtility.h"
#include "host/Utf8.h"
#include "refhost/HostSide.h"
#include "tessel/core/AppError.h"
#include "tessel/system/CaseMapping.h"

#include <cmath>

namespace tessel {
namespace {

using VeltoGis::Data::CDataBox;
using Transform = VeltoGis::ImportExport::CDataBind::Transform;

// Code units outside the basic plane (surrogates) stay as they are.
void MapText(CDataBox& value, LetterCase to)
{
    if (refhost::KindOf(value) != CDataBox::Kind::Text)
        return;
    WString text = refhost::TextOf(value);
    for (WChar& unit : text) {
        if (unit < 0xD800 || unit > 0xDFFF)
            unit = ToLetterCase(unit, to);
    }
    value.SetValue(text.c_str());
}

void Upper(CDataBox& value) { MapText(value, LetterCase::Upper); }

void Lower(CDataBox& value) { MapText(value, LetterCase::Lower); }

bool IsBlank(WChar c) { return c == ' ' || c == '\t' || c == 0x00A0; }

void Trim(CDataBox& value)
{
    if (refhost::KindOf(value) != CDataBox::Kind::Text)
        return;
    const WString& text = refhost::TextOf(value);
    std::size_t first = 0, last = text.size();
    while (first < last && IsBlank(text[first]))
        ++first;
    while (last > first && IsBlank(text[last - 1]))
        --last;
    const WString trimmed = text.substr(first, last - first);
    value.SetValue(trimmed.c_str());
}

void ToText(CDataBox& value)
{
    if (!value.IsNotNull())
        return;
    const WString text = static_cast<WString>(value);
    value.SetValue(text.c_str());
}

void ToReal(CDataBox& value)
{
    switch (refhost::KindOf(value)) {
    case CDataBox::Kind::Text:
        value.SetValue(VeltoGis::Utility::CUtility::AtoF(refhost::TextOf(value).c_str()));
        break;
    case CDataBox::Kind::Integer:
        value.SetValue(static_cast<double>(refhost::IntegerOf(value)));
        break;
    default: break;
    }
}

void ToInteger(CDataBox& value)
{
    switch (refhost::KindOf(value)) {
    case CDataBox::Kind::Text: {
        const double number = VeltoGis::Utility::CUtility::AtoF(refhost::TextOf(value).c_str());
        value.SetValue(std::isfinite(number) && std::fabs(number) < 2147483648.0 ? static_cast<int>(number) : 0);
        break;
    }
    case CDataBox::Kind::Real: {
        const double number = refhost::RealOf(value);
        value.SetValue(std::isfinite(number) && std::fabs(number) < 2147483648.0 ? static_cast<int>(number) : 0);
        break;
    }
    default: break;
    }
}

struct NamedTransform {
    const char* name;
    void (*apply)(CDataBox&);
};

const NamedTransform kTransforms[] = {
    {"upper", Upper}, {"lower", Lower}, {"trim", Trim},         {"null", [](CDataBox& value) { value.SetNull(); }},
    {"text", ToText}, {"real", ToReal}, {"integer", ToInteger},
};

} // namespace

const std::vector<std::string>& TransformNames()
{
    static const std::vector<std::string> names = [] {
        std::vector<std::string> list;
        for (const auto& transform : kTransforms)
            list.push_back(transform.name);
        return list;
    }();
    return names;
}

Transform FindTransform(const std::string& name)
{
    for (const auto& transform : kTransforms) {
        if (name == transform.name)
            return transform.apply;
    }
    std::string known;
    for (const auto& item : TransformNames())
        known += (known.empty() ? "" : ", ") + item;
    throw UsageError("--transform: unknown transform '" + name + "' (known: " + known + ")");
}

void ApplyTransforms(const std::vector<TransformOption>& choices,
                     const std::vector<boost::shared_ptr<VeltoGis::ImportExport::CDataBindCollection>>& collections)
{
    for (const TransformOption& choice : choices) {
        const Transform transform = FindTransform(choice.transform);
        const WString target = FromUtf8(choice.target);
        int applied = 0;
        for (const auto& collection : collections) {
            if (!collection)
                continue;
            for (const auto& bind : collection->GetDataBindCollection()) {
                if (bind && bind->GetTargetDataId() == target) {
                    refhost::SetImportTransform(*bind, transform);
                    refhost::SetExportTransform(*bind, transform);
                    ++applied;
                }
            }
        }
        if (applied == 0)
            throw UsageError("--transform: no bind has the target '" + choice.target + "'");
    }
}

} // namespace tessel
