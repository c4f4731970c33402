#include "ImportTestSupport.h"

#include "host/GisUtility.h"
#include "import/ImportTxtConfiguration.h"
#include "platform/Platform.h"
#include "refhost/CadShimRecording.h"
#include "refhost/HostSide.h"

#include <boost/make_shared.hpp>
#include <sstream>

namespace importtest {

using namespace VeltoGis::ImportExport;
using VeltoGis::Data::CDataBox;
using VeltoGis::Utility::CCoreProgressBar;

WString ConfigurationXml(const WString& path, const Layout& layout)
{
    ImportTxtConfiguration configuration;
    configuration.SetTxtFile(path);
    DelimiterList delimiters;
    for (const std::string& delimiter : layout.delimiters)
        delimiters.push_back(W(delimiter));
    configuration.SetDelimiters(delimiters);
    configuration.SetComments(W(layout.comments));
    configuration.SetMode(layout.mode);
    configuration.GetPositions() = layout.positions;
    for (const Column& wanted : layout.columns) {
        auto column = boost::make_shared<CColumnData>();
        column->SetNo(wanted.no);
        column->SetName(W(wanted.name));
        column->SetType(wanted.type);
        column->SetOnOff(wanted.onOff);
        configuration.GetColumns().push_back(column);
    }
    return configuration.ToXml();
}

std::string Describe(const DataValueList& values)
{
    std::ostringstream text;
    for (const auto& value : values) {
        text << (&value == &values.front() ? "" : " ");
        switch (refhost::KindOf(*value)) {
        case CDataBox::Kind::Null: text << "null"; break;
        case CDataBox::Kind::Integer:
            text << "i:" << refhost::IntegerOf(*value);
            break;
        case CDataBox::Kind::Real:
            text << "r:" << refhost::RealOf(*value);
            break;
        case CDataBox::Kind::Text:
            text << "t:" << U8(refhost::TextOf(*value));
            break;
        }
    }
    return text.str();
}

Texts Describe(const ImpexEntityList& entities)
{
    Texts texts;
    for (const auto& entity : entities) {
        std::ostringstream text;
        text << (refhost::HasName(*entity) ? U8(refhost::NameOf(*entity)) : "-");
        if (const auto* point = dynamic_cast<const CImpexPoint*>(entity.get())) {
            const AcGePoint3d& at = refhost::PositionOf(*point);
            text << " @";
            if (refhost::HasPosition(*point))
                text << at.x << "," << at.y << (at.z == 0.0 ? "" : ",z!");
            else
                text << "-";
        }
        if (const auto* line = dynamic_cast<const CImpexLine*>(entity.get()))
            text << " " << (refhost::HasStartingNodeName(*line) ? U8(refhost::StartingNodeNameOf(*line)) : "?") << ">"
                 << (refhost::HasEndingNodeName(*line) ? U8(refhost::EndingNodeNameOf(*line)) : "?");
        text << " [" << Describe(refhost::ValuesOf(*entity)) << "]";
        texts.push_back(text.str());
    }
    return texts;
}

Texts Describe(const CDBTable& table)
{
    Texts texts;
    for (const auto& row : refhost::RowsOf(table))
        texts.push_back("[" + Describe(row->Data()) + "]");
    return texts;
}

Texts ProgressCalls()
{
    Texts calls;
    for (const auto& call : refhost::RecordedProgressCalls()) {
        switch (call.kind) {
        case refhost::ProgressCallKind::Show:
            calls.push_back("show:" + U8(call.text) + ":" + std::to_string(call.value) + ":" +
                            std::to_string(call.upper));
            break;
        case refhost::ProgressCallKind::SetPosition:
            calls.push_back("pos:" + std::to_string(call.value));
            break;
        case refhost::ProgressCallKind::Hide:
            calls.push_back("hide");
            break;
        case refhost::ProgressCallKind::RestoreState:
            calls.push_back("restore");
            break;
        case refhost::ProgressCallKind::SaveState:
            calls.push_back("save");
            break;
        }
    }
    return calls;
}

WString Msg(unsigned id) { return VeltoGis::CModuleConfiguration::Instance()->GetMsg(id); }

void ImportTest::SetUp()
{
    CadShim::ClearRecordings();
    refhost::StartProgressRecording();
}

void ImportTest::TearDown()
{
    refhost::StopProgressRecording();
    Platform::Faults::ClearFaults();
}

} // namespace importtest
