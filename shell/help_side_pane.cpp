#include "shell/help_side_pane.h"

#include "shell/help_contents.h"
#include "shell/help_controls.h"
#include "shell/help_index.h"
#include "shell/help_place_list.h"

HelpSidePane::HelpSidePane(QWidget* parent) : QTabWidget(parent) {
    named(this, "Tabs", QStringLiteral("Ways to a page"));
    setDocumentMode(true);
    setMinimumWidth(fontMetrics().averageCharWidth() * 28);
    contents_ = new HelpContents(this);
    index_ = new HelpIndex(this);
    hits_ = named(new HelpPlaceList(this), "Hits", QStringLiteral("Places found"));
    hits_->setWordWrap(true);
    connect(contents_, &HelpContents::chosen, this, &HelpSidePane::chosen);
    connect(index_, &HelpIndex::chosen, this, &HelpSidePane::chosen);
    connect(hits_, &HelpPlaceList::chosen, this, &HelpSidePane::chosen);
    addTab(contents_, QStringLiteral("&Contents"));
    addTab(index_, QStringLiteral("&Index"));
    addTab(hits_, QStringLiteral("&Found"));
}

void HelpSidePane::fill(const HelpBook& book) {
    contents_->fill(book);
    index_->fill(book);
}

void HelpSidePane::showContents() {
    setCurrentWidget(contents_);
}

void HelpSidePane::showIndex() {
    setCurrentWidget(index_);
    index_->startTyping();
}

void HelpSidePane::clearHits() {
    hits_->clear();
}

void HelpSidePane::showHits(const QList<HelpHit>& hits) {
    clearHits();
    for (const HelpHit& hit : hits) {
        hits_->add(hit.text, hit.place);
    }
    setCurrentWidget(hits_);
}

void HelpSidePane::followFirstHit() {
    hits_->setCurrentRow(0);
    hits_->follow(hits_->currentItem());
}
