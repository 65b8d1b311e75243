#include "app/presentation/SearchRequest.h"

#include <QList>

namespace tallyview {

namespace {

QList<SearchRequest *> &listeners() {
    static QList<SearchRequest *> all;
    return all;
}

} // namespace

SearchRequest::SearchRequest(QObject *parent) : QObject(parent) { listeners().append(this); }

SearchRequest::~SearchRequest() { listeners().removeOne(this); }

void SearchRequest::post() {
    const QList<SearchRequest *> all = listeners();
    for (SearchRequest *listener : all) {
        if (listener->m_enabled) {
            emit listener->posted();
        }
    }
}

} // namespace tallyview
