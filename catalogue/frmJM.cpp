#include "catalogue/frmJM.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "common/settings.h"
#include "common/window_help.h"
#include "common/window_helpers.h"
#include "common/window_places.h"
#include "platform/controls/keys.h"
#include "platform/controls/list_box.h"
#include "platform/system/trap.h"

namespace {

constexpr int kNameLimit = 25;

}  // namespace

// Building --------------------------------------------------------------------------------------------------

frmJM::frmJM(QWidget* parent)
    : QDialog(parent), units_(this), commands_(units_, this), menu_(units_, commands_, this) {
    setObjectName(QStringLiteral("frmJM"));
    setWindowTitle(QStringLiteral("Jedinica mere"));
    auto* page = new QHBoxLayout(this);
    page->setContentsMargins(14, 14, 14, 12);
    page->setSpacing(10);
    auto* left = new QVBoxLayout;
    auto* entry = new QHBoxLayout;
    auto* right = new QVBoxLayout;
    buildEntry(entry);
    buildButtons(right);
    left->addLayout(entry);
    left->addWidget(&units_.rows(), 1);
    page->addLayout(left, 1);
    page->addLayout(right);
    setTabOrder(Text1_, Command1_[Add]);
    setTabOrder(Command1_[Add], &units_.rows());
    setTabOrder(&units_.rows(), Command1_[Change]);
    connectControls();
    explainByF1(this, UnitsTopic);
}

frmJM::~frmJM() {
    Unload();
}

void frmJM::buildEntry(QHBoxLayout* row) {
    Text1_ = new QLineEdit(this);
    Text1_->setObjectName(QStringLiteral("Text1"));
    Text1_->setAccessibleName(QStringLiteral("Nova jedinica mere"));
    Text1_->setMaxLength(kNameLimit);
    row->addWidget(Text1_, 1);
}

void frmJM::buildButtons(QVBoxLayout* column) {
    const char* const captions[] = {"Dodaj",        "&Promeni...", "&Izbrisi",
                                    "Izbrisi &Sve", "&Azuriraj",   "Zatvori"};
    for (int i = 0; i < Count; ++i) {
        auto* button = new QPushButton(QString::fromLatin1(captions[i]), this);
        button->setObjectName(arrayName("Command1", i));
        button->setAccessibleName(spokenCaption(button->text()));
        button->setAutoDefault(false);  // Enter in the list presses nothing
        if (i == Change) {
            column->addSpacing(8);
        }
        if (i == Close) {
            column->addStretch(1);
        }
        column->addWidget(button);
        Command1_[static_cast<size_t>(i)] = button;
    }
}

void frmJM::connectControls() {
    const auto clicked = [this](Button button, auto action) {
        connect(Command1_[button], &QPushButton::clicked, this, action);
    };
    clicked(Add, [this] { addUnit(); });
    clicked(Change, [this] { commands_.change(); });
    clicked(Delete, [this] { commands_.remove(); });
    clicked(DeleteAll, [this] { commands_.removeAll(); });
    clicked(Refresh, [this] { Sort(RefreshOnly, false); });
    clicked(Close, [this] { reject(); });
    connect(Text1_, &QLineEdit::textChanged, this,
            [this] { Command1_[Add]->setEnabled(!Text1_->text().trimmed().isEmpty()); });
    connect(&units_, &UnitList::changed, this, &frmJM::updateButtons);
    connect(&units_.rows(), &platform::ListBox::contextMenuAsked, &menu_, &UnitMenu::show);
    units_.rows().installEventFilter(this);
    Text1_->installEventFilter(this);
    platform::enterPressesButtons(this);
}

// Opening and closing ---------------------------------------------------------------------------------------

void frmJM::Display() {
    if (!loaded_) {
        loaded_ = true;
        moveToPlace(this, settings::text(settings::units.WindowData));
        menu_.create();
        units_.load();
        Text1_->setFocus();
    }
    exec();
}

void frmJM::Unload() {
    if (!loaded_ || unloaded_) {
        return;
    }
    unloaded_ = true;
    menu_.drop();
    units_.save();
    platform::Trap step;  // a place that cannot be kept must not disturb the work
    step([&] { settings::setText(settings::units.WindowData, placeOf(this)); });
}

// Commands --------------------------------------------------------------------------------------------------

void frmJM::Sort(int mode, bool force) {
    units_.sort(static_cast<::SortMode>(mode), force);
}

void frmJM::addUnit() {
    const QString name = Text1_->text().trimmed();
    if (name.isEmpty()) {
        return;
    }
    commands_.add(name);
    Text1_->clear();
    updateButtons();
}

void frmJM::updateButtons() {
    Command1_[Add]->setEnabled(!Text1_->text().trimmed().isEmpty());
    Command1_[Change]->setEnabled(units_.hasSelection());
    Command1_[Delete]->setEnabled(units_.hasSelection());
    Command1_[DeleteAll]->setEnabled(units_.hasRows());
}

bool frmJM::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if (watched == Text1_ && platform::isEnter(key)) {
            platform::pressTab(Text1_);
            return true;
        }
        if (watched == &units_.rows() && key.modifiers() == Qt::NoModifier &&
            (key.key() == Qt::Key_F5 || key.key() == Qt::Key_F8)) {
            Sort(key.key() == Qt::Key_F5 ? RefreshOnly : Unsorted, false);
            return true;
        }
    }
    return QDialog::eventFilter(watched, event);
}
