#include "platform/report/find_bar.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include "platform/report/page_view.h"

namespace report {

FindBar::FindBar(const Document& document, PageView& view, QWidget* parent)
    : QFrame(parent), document_(document), view_(view) {
    setObjectName(QStringLiteral("FindBar"));
    auto* label = new QLabel(QStringLiteral("&Nadji:"), this);
    text_ = new QLineEdit(this);
    text_->setObjectName(QStringLiteral("Find"));
    text_->setAccessibleName(QStringLiteral("Nadji"));
    text_->setClearButtonEnabled(true);
    text_->setMaximumWidth(320);
    label->setBuddy(text_);
    found_ = new QLabel(this);
    found_->setObjectName(QStringLiteral("Found"));
    found_->setAccessibleName(QStringLiteral("Rezultat trazenja"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(8, 4, 8, 4);
    row->addWidget(label);
    row->addWidget(text_, 1);
    const auto addButton = [&](const char* name, const char* text, auto act) {
        auto* button = new QToolButton(this);
        button->setObjectName(QString::fromLatin1(name));
        button->setText(QString::fromUtf8(text));
        button->setAccessibleName(button->text());
        button->setFocusPolicy(Qt::TabFocus);
        connect(button, &QToolButton::clicked, this, act);
        row->addWidget(button);
    };
    addButton("Previous", "Prethodno", [this] { goOn(-1); });
    addButton("Next", "Sledece", [this] { goOn(1); });
    row->addWidget(found_, 1);
    addButton("CloseFind", "Zatvori", [this] { dismiss(); });
    hide();
}

void FindBar::open() {
    show();
    text_->setFocus();
    text_->selectAll();
}

void FindBar::dismiss() {
    hide();
    hits_.clear();
    searched_.clear();
    hit_ = -1;
    view_.showHits({}, -1);
    view_.setFocus();
}

void FindBar::search() {
    searched_ = text_->text();
    hits_ = document_.find(searched_);
    hit_ = -1;
}

void FindBar::goOn(int step) {
    if (text_->text().isEmpty()) {
        open();
        return;
    }
    show();
    if (searched_ != text_->text()) {
        search();
    }
    if (hits_.isEmpty()) {
        view_.showHits({}, -1);
        tell(QStringLiteral("Tekst nije nadjen."));
        return;
    }
    const int count = static_cast<int>(hits_.size());
    if (hit_ >= 0) {
        hit_ = (hit_ + step + count) % count;
    } else {
        takeFirst(step);
    }
    view_.showHits(hits_, hit_);
    tell(QStringLiteral("%1 od %2").arg(hit_ + 1).arg(count));
}

// A search begins at the page that is looked at, not at the top of two hundred others.
void FindBar::takeFirst(int step) {
    const int count = static_cast<int>(hits_.size());
    const int page = view_.page();
    hit_ = 0;
    while (hit_ + 1 < count && hits_.at(hit_).page < page) {
        ++hit_;
    }
    if (hits_.at(hit_).page < page) {
        hit_ = 0;
    }
    if (step < 0) {
        hit_ = (hit_ + count - 1) % count;
    }
}

void FindBar::tell(const QString& text) {
    found_->setText(text);
}

// What is pressed in one of its controls comes by here on its way to the window.
void FindBar::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && text_->hasFocus()) {
        goOn(event->modifiers() & Qt::ShiftModifier ? -1 : 1);
    } else if (event->key() == Qt::Key_Escape) {
        dismiss();
    } else {
        QFrame::keyPressEvent(event);
    }
}

}  // namespace report
