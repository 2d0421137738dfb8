#include "host/srfind/line_source.h"

#include "module/user_names.h"

LineSource::LineSource(const Options& options, const LinePlace& place, const LineCriteria& criteria)
    : options_(options), place_(place), criteria_(criteria) {
    if (Server() != nullptr) ReadApplicationUserName(*server_, application_);
    ReadLoginUserName(login_);
}

LineSource::~LineSource() {
    if (server_ != nullptr) server_->Release();
}

SRxSearchQuery LineSource::ReadQuery() {
    SRxSearchQuery query;
    query.criteria = criteria_.list.head;
    query.decidesCustom = !options_.records;
    query.propSearchType = query.decidesCustom ? ClassWithCustom() : criteria_.list.propSearchType;
    query.users = {application_, login_};
    query.matchCase = criteria_.matchCase;
    query.route = options_.haveFilesFrom ? eSearchRoute::Selection
                  : options_.related     ? eSearchRoute::RelatedDocuments
                                         : eSearchRoute::Folders;
    query.subfolders = options_.subfolders ? 1 : 0;
    return query;
}

// Models and office documents have custom properties.
eFileTypeSearch LineSource::ClassWithCustom() const {
    eFileTypeSearch least = FILE_SEARCH_ANY;
    for (const SRxCriteriaNode* c = criteria_.list.head; c != nullptr; c = c->nextCriterion) {
        if (c->IsFileTypeCriterion()) continue;
        if (c->propertyCategory != eCategoryCustom) {
            least = PropSearchTypeWith(*c, least);
        } else if (least == FILE_SEARCH_ANY || least > FILE_SEARCH_OFFICE) {
            least = FILE_SEARCH_OFFICE;
        }
    }
    return least;
}

IQxLecternServer* LineSource::Server() {
    if (server_ == nullptr) (void)MDxGetLecternServer(&server_, true, nullptr, 0);
    return server_;
}
