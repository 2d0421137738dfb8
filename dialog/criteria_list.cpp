// The dialog's list of criteria: the rules of the list with the dialog's questions.
#include "criteria/list_rules.h"

#include "dialog/dialog_messages.h"
#include "dialog/find_dialog.h"
#include "outside/md_messages.h"

namespace {

// Asks and tells in message boxes over the find dialog.
class BoxAsker : public SRxListAsker {
public:
    explicit BoxAsker(const SRxFindDialog& dialog) : dialog_(dialog) {}
    virtual ~BoxAsker() = default;

    bool Ask(UINT question) override {
        const int button = Show(question, MB_YESNO, eKindQuestion);
        return button == IDYES || button == IDOK;
    }
    void Say(UINT message) override { Show(message, MB_OK, eKindError); }

private:
    int Show(UINT id, UINT style, int kind) const {
        return DisplayMessageId(dialog_.resourceInstance, id, style, kind, 0, dialog_.dialogWindow);
    }

    const SRxFindDialog& dialog_;
};

}  // namespace

bool SRxFindDialog::AddNode(SRxCriteriaNode* node, bool appendOnly, int* outIndex,
                            bool* outReplaced) {
    BoxAsker asker(*this);
    int index = 0;
    bool replaced = false;
    const bool added = ::AddNode({criteriaHead, fileSearchType, propSearchType}, node, appendOnly,
                                 asker, index, replaced);
    // A row of the list box: the first node of a part environment has none.
    if (outIndex != nullptr) *outIndex = IsPartEnv() ? index - 1 : index;
    if (outReplaced != nullptr) *outReplaced = replaced;
    return added;
}

bool SRxFindDialog::DeleteNode(SRxCriteriaNode** node) {
    if (node != nullptr) ::DeleteNode(criteriaHead, *node);
    return true;
}

bool SRxFindDialog::IsValidSearch(const SRxCriteriaNode& node) const {
    return ::IsValidSearch(node, fileSearchType, propSearchType);
}

eFileTypeSearch SRxFindDialog::GetFileSearchType(const SRxCriteriaNode& node) const {
    return FileSearchTypeWith(node, fileSearchType);
}

eFileTypeSearch SRxFindDialog::GetPropSearchType(const SRxCriteriaNode& node) const {
    return PropSearchTypeOf(node);
}

bool SRxFindDialog::SetPropSearchType(const SRxCriteriaNode& node) {
    propSearchType = PropSearchTypeWith(node, propSearchType);
    return true;
}
