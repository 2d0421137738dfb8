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
    query.propSearchType = criteria_.list.propSearchType;
    query.users = {application_, login_};
    query.matchCase = criteria_.matchCase;
    query.route = options_.haveFilesFrom ? eSearchRoute::Selection
                  : options_.related     ? eSearchRoute::RelatedDocuments
                                         : eSearchRoute::Folders;
    query.subfolders = options_.subfolders ? 1 : 0;
    return query;
}

IQxLecternServer* LineSource::Server() {
    if (server_ == nullptr) (void)MDxGetLecternServer(&server_, true, nullptr, 0);
    return server_;
}
