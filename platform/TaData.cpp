#include "platform/TaData.h"

#include <algorithm>

bool CTADataInterface::bAddptDataRepository2Vec(CTADataRepository* repository) {
    if (repository == nullptr ||
        std::ranges::find(m_repositories, repository) != m_repositories.end()) {
        return false;
    }
    m_repositories.push_back(repository);
    return true;
}

std::shared_ptr<const BarSeries> CTADataInterface::pGetBars(const BarsKey& key) const {
    for (const CTADataRepository* repository : m_repositories) {
        if (auto bars = repository->pGetBars(key)) {
            return bars;
        }
    }
    return nullptr;
}
