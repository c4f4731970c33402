#include "host/ImpexData.h"

namespace VeltoGis {
namespace ImportExport {
namespace {

// A survey entity carries a few attribute values besides its name and position: one
// allocation holds them, without the regrowths from one slot up, and without the memory
// that a larger reserve would cost over millions of entities.
constexpr std::size_t kInitialValueCapacity = 4;

void Assign(WString& target, const WChar* text) { target.assign(text ? text : WTEXT("")); }

} // namespace

CImpexEntity::CImpexEntity() = default;
CImpexEntity::~CImpexEntity() = default;

void CImpexEntity::SetName(const WChar* name)
{
    name_.SetValue(name ? name : WTEXT(""));
}

void CImpexEntity::AddData(boost::shared_ptr<CDataBox> value)
{
    if (values_.capacity() == 0)
        values_.reserve(kInitialValueCapacity);
    values_.push_back(std::move(value));
}

CImpexPoint::CImpexPoint() = default;
CImpexPoint::~CImpexPoint() = default;

void CImpexPoint::SetPosition(const AcGePoint3d& position)
{
    position_ = position;
    hasPosition_ = true;
}

CImpexLine::CImpexLine() = default;
CImpexLine::~CImpexLine() = default;

void CImpexLine::SetStartingNodeName(const WChar* name)
{
    Assign(start_, name);
    hasStart_ = true;
}

void CImpexLine::SetEndingNodeName(const WChar* name)
{
    Assign(end_, name);
    hasEnd_ = true;
}

CImpexPolygon::CImpexPolygon() = default;
CImpexPolygon::~CImpexPolygon() = default;

} // namespace ImportExport
} // namespace VeltoGis
