#include "catalogue/catalogue_split.h"

#include "catalogue/catalogue_parts.h"
#include "common/settings.h"
#include "platform/controls/splitter.h"
#include "platform/system/trap.h"

namespace {

constexpr int kLowerLimit = 30, kUpperLimit = 70;  // percent

}  // namespace

CatalogueSplit::CatalogueSplit(QWidget* window, const CatalogueParts& parts)
    : betweenLists_(new platform::Splitter(Qt::Horizontal, window)),
      overProducts_(new platform::Splitter(Qt::Vertical, window)) {
    betweenLists_->setObjectName(QStringLiteral("VSplitter"));
    betweenLists_->setPanes(parts.groups.surface(), parts.manufacturers.surface());
    overProducts_->setObjectName(QStringLiteral("HSplitter"));
    overProducts_->setPanes(betweenLists_, parts.products.surface());
    for (platform::Splitter* splitter : {betweenLists_, overProducts_}) {
        splitter->setLimits(kLowerLimit, kUpperLimit);
    }
}

void CatalogueSplit::load() {
    betweenLists_->setPosition(settings::integer(settings::catalogue.VerticalSplitPosition));
    overProducts_->setPosition(settings::integer(settings::catalogue.HorisontalSplitPosition));
}

void CatalogueSplit::save(platform::Trap& step) const {
    step([&] { settings::setInteger(settings::catalogue.VerticalSplitPosition, betweenLists_->position()); });
    step([&] {
        settings::setInteger(settings::catalogue.HorisontalSplitPosition, overProducts_->position());
    });
}
