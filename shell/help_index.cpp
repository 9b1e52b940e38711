#include "shell/help_index.h"

#include <QHash>
#include <QLineEdit>
#include <QVBoxLayout>
#include <algorithm>

#include "shell/help_controls.h"
#include "shell/help_place_list.h"

namespace {

struct Entry {
    QString word, title;
    HelpPlace place;
};

QList<Entry> entriesOf(const HelpBook& book) {
    QList<Entry> entries;
    for (const HelpPage& page : book.pages()) {
        for (const HelpPage::Keyword& keyword : page.keywords) {
            entries += {keyword.word, page.title, {page.id, keyword.anchor}};
        }
    }
    std::stable_sort(entries.begin(), entries.end(), [](const Entry& one, const Entry& other) {
        return one.word.compare(other.word, Qt::CaseInsensitive) < 0;
    });
    return entries;
}

}  // namespace

HelpIndex::HelpIndex(QWidget* parent) : QWidget(parent) {
    field_ = named(new QLineEdit(this), "IndexField", QStringLiteral("Look up a word in the index"));
    field_->setPlaceholderText(QStringLiteral("Type the first letters"));
    list_ = named(new HelpPlaceList(this), "Index", QStringLiteral("Index"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->addWidget(field_);
    layout->addWidget(list_);
    connect(field_, &QLineEdit::textChanged, this, &HelpIndex::filter);
    connect(field_, &QLineEdit::returnPressed, list_, [this] { list_->follow(list_->currentItem()); });
    connect(list_, &HelpPlaceList::chosen, this, &HelpIndex::chosen);
}

// A word that stands for several pages names the page.
void HelpIndex::fill(const HelpBook& book) {
    const QList<Entry> entries = entriesOf(book);
    QHash<QString, int> times;
    for (const Entry& entry : entries) {
        ++times[entry.word];
    }
    list_->clear();
    for (const Entry& entry : entries) {
        const bool isAlone = times.value(entry.word) == 1;
        list_->add(isAlone ? entry.word : QStringLiteral("%1 (%2)").arg(entry.word, entry.title),
                   entry.place);
    }
    list_->setCurrentRow(0);
}

void HelpIndex::filter(const QString& words) {
    int first = -1;
    for (int row = 0; row < list_->count(); ++row) {
        const bool fits = list_->item(row)->text().contains(words.trimmed(), Qt::CaseInsensitive);
        list_->item(row)->setHidden(!fits);
        first = fits && first < 0 ? row : first;
    }
    list_->setCurrentRow(first);
}

void HelpIndex::startTyping() {
    field_->setFocus();
    field_->selectAll();
}
