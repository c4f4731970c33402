#include "ImportTestSupport.h"

#include "host/GisUtility.h"
#include "import/ImportTxtConfiguration.h"
#include "refhost/CadShimRecording.h"
#include "platform/Platform.h"

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
        switch (value->GetKind()) {
        case CDataBox::Kind::Null: text << "null"; break;
        case CDataBox::Kind::Integer: text << "i:" << value->GetInteger(); break;
        case CDataBox::Kind::Real: text << "r:" << value->GetReal(); break;
        case CDataBox::Kind::Text: text << "t:" << U8(value->GetText()); break;
        }
    }
    return text.str();
}

Texts Describe(const ImpexEntityList& entities)
{
    Texts texts;
    for (const auto& entity : entities) {
        std::ostringstream text;
        text << (entity->HasName() ? U8(entity->GetName()) : "-");
        if (const auto* point = dynamic_cast<const CImpexPoint*>(entity.get())) {
            const AcGePoint3d& at = point->GetPosition();
            text << " @";
            if (point->HasPosition())
                text << at.x << "," << at.y << (at.z == 0.0 ? "" : ",z!");
            else
                text << "-";
        }
        if (const auto* line = dynamic_cast<const CImpexLine*>(entity.get()))
            text << " " << (line->HasStartingNodeName() ? U8(line->GetStartingNodeName()) : "?") << ">"
                 << (line->HasEndingNodeName() ? U8(line->GetEndingNodeName()) : "?");
        text << " [" << Describe(entity->Values()) << "]";
        texts.push_back(text.str());
    }
    return texts;
}

Texts Describe(const CDBTable& table)
{
    Texts texts;
    for (const auto& row : table.Rows())
        texts.push_back("[" + Describe(row->Data()) + "]");
    return texts;
}

Texts ProgressCalls()
{
    Texts calls;
    for (const auto& call : CCoreProgressBar::Instance()->RecordedCalls()) {
        switch (call.kind) {
        case CCoreProgressBar::CallKind::Show:
            calls.push_back("show:" + U8(call.text) + ":" + std::to_string(call.value) + ":" +
                            std::to_string(call.upper));
            break;
        case CCoreProgressBar::CallKind::SetPosition: calls.push_back("pos:" + std::to_string(call.value)); break;
        case CCoreProgressBar::CallKind::Hide: calls.push_back("hide"); break;
        case CCoreProgressBar::CallKind::RestoreState: calls.push_back("restore"); break;
        case CCoreProgressBar::CallKind::SaveState: calls.push_back("save"); break;
        }
    }
    return calls;
}

WString Msg(unsigned id) { return VeltoGis::CModuleConfiguration::Instance()->GetMsg(id); }

void ImportTest::SetUp()
{
    CadShim::ClearRecordings();
    CCoreProgressBar::Instance()->StartRecording();
}

void ImportTest::TearDown()
{
    CCoreProgressBar::Instance()->StopRecording();
    Platform::Faults::ClearFaults();
}

} // namespace importtest
