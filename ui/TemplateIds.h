#pragma once
// The template controls the views reach by name. The numbers are those of
// ui/templates/*.def; a test checks that each is in its template with the kind the view
// expects. Plain C++, so that the test needs no toolkit.

#include "ui/DialogTemplates.h"

#include <utility>

namespace ImportControl {
constexpr int kFileLabel = 230, kFilePath = 201, kBrowse = 200, kEncodingLabel = 231, kEncoding = 233,
              kDelimited = 203, kFixedWidth = 205, kDelimiterLabel = 232, kSpace = 206, kTab = 207, kOther = 208,
              kOtherDelimiters = 209, kCommentLabel = 234, kComments = 204, kRuler = 221, kRemoveBreaks = 222,
              kShownColumns = 235, kColumnLabel = 236, kColumnList = 104, kRebuildColumns = 102, kPresetLabel = 237,
              kPreset = 240, kDetect = 241, kSavePreset = 242, kNamesLine = 243, kNote = 244, kOk = 1, kCancel = 2;
constexpr std::pair<int, ControlKind> kUsed[] = {
    {kFileLabel, ControlKind::Label},       {kFilePath, ControlKind::Edit},
    {kBrowse, ControlKind::IconButton},     {kEncodingLabel, ControlKind::Label},
    {kEncoding, ControlKind::Label},        {kDelimited, ControlKind::RadioFirst},
    {kFixedWidth, ControlKind::Radio},      {kDelimiterLabel, ControlKind::Label},
    {kSpace, ControlKind::Check},           {kTab, ControlKind::Check},
    {kOther, ControlKind::Check},           {kOtherDelimiters, ControlKind::Edit},
    {kCommentLabel, ControlKind::Label},    {kComments, ControlKind::Edit},
    {kRuler, ControlKind::Ruler},           {kRemoveBreaks, ControlKind::IconButton},
    {kPreviewPlaceholderId, ControlKind::Placeholder},
    {kShownColumns, ControlKind::Label},    {kColumnLabel, ControlKind::Label},
    {kColumnList, ControlKind::ColumnList}, {kRebuildColumns, ControlKind::Button},
    {kPresetLabel, ControlKind::Label},     {kPreset, ControlKind::Combo},
    {kDetect, ControlKind::Button},         {kSavePreset, ControlKind::Button},
    {kNamesLine, ControlKind::Check},       {kNote, ControlKind::ReadOnlyText},
    {kOk, ControlKind::Button},             {kCancel, ControlKind::Button},
};
} // namespace ImportControl

namespace ExportControl {
constexpr int kFileLabel = 115, kFilePath = 105, kBrowse = 200, kCommentLabel = 116, kComment = 204,
              kDelimiterLabel = 117, kSpace = 110, kTab = 111, kOther = 112, kOtherDelimiter = 114, kHeader = 109,
              kFormatGroup = 118, kEncodingLabel = 233, kAnsi = 107, kUtf16 = 108, kOk = 1, kCancel = 2;
constexpr std::pair<int, ControlKind> kUsed[] = {
    {kFileLabel, ControlKind::Label},      {kFilePath, ControlKind::Edit},    {kBrowse, ControlKind::IconButton},
    {kCommentLabel, ControlKind::Label},   {kComment, ControlKind::Edit},     {kDelimiterLabel, ControlKind::Label},
    {kSpace, ControlKind::RadioFirst},     {kTab, ControlKind::Radio},        {kOther, ControlKind::Radio},
    {kOtherDelimiter, ControlKind::Edit},  {kHeader, ControlKind::Check},     {kFormatGroup, ControlKind::GroupBox},
    {kEncodingLabel, ControlKind::Label},  {kAnsi, ControlKind::RadioFirst},  {kUtf16, ControlKind::Radio},
    {kOk, ControlKind::DefaultButton},     {kCancel, ControlKind::Button},
};
} // namespace ExportControl

namespace FileChoiceControl {
constexpr int kQuestion = 114;
// The buttons come from FileChoiceModel::kButtons.
constexpr std::pair<int, ControlKind> kUsed[] = {{kQuestion, ControlKind::ReadOnlyText}};
} // namespace FileChoiceControl
