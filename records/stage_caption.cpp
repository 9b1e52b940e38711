#include "records/stage_caption.h"

#include "common/modMain.h"
#include "records/main_view.h"
#include "records/stage_facts.h"

void StageCaption::show(const QString& text) {
    window_.setTabCaption(index_ + 1, text);
}

void StageCaption::showUsual() {
    show(GetResString(stageFacts(index_).captionId));
}
