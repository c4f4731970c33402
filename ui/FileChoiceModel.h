#pragma once
// What the existing-file question shows and answers, apart from the toolkit.

#include "host/Messages.h"
#include "host/Text.h"
#include "ui/DialogFactory.h"

class FileChoiceModel {
public:
    struct Button {
        int controlId;
        MessageId caption;
        int result; // a FileChoice
    };
    // The three buttons, in the order they are shown.
    static constexpr Button kButtons[] = {{113, MessageId::OverwriteCaption, FileChoiceOverwrite},
                                          {112, MessageId::AppendCaption, FileChoiceAppend},
                                          {111, MessageId::CancelCaption, FileChoiceCancel}};
    // The close box and Esc: an existing file is never touched unless somebody chose to.
    static constexpr int kClosedResult = FileChoiceCancel;

    explicit FileChoiceModel(const WString& path) : path_(path) {}

    // The host's question with the path put in.
    WString Question() const;
    WString Title() const { return LoadMessage(MessageId::FileExistsTitle); }

private:
    WString path_;
};
