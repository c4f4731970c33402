#include "ui/FileChoiceModel.h"

#include "host/WideText.h"

WString FileChoiceModel::Question() const
{
    return FormatWide(LoadMessage(MessageId::FileExistsQuestion), {FormatArg(path_)});
}
