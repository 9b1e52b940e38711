#include "shell/option_numbers.h"

#include <QEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

#include "common/modMain.h"
#include "common/settings.h"
#include "common/window_helpers.h"
#include "platform/controls/boxes.h"
#include "platform/controls/keys.h"
#include "platform/system/numbers.h"
#include "platform/system/trap.h"
#include "records/program_windows.h"
#include "shell/option_controls.h"

namespace {

constexpr float kRateOfBlank = 82;  // not the default that is offered for a wrong rate: that is 81
constexpr char kTag[] = "Tag";      // a field's usual value

constexpr std::size_t kDays = 0, kTax = 1, kRate = 2;

struct Row {
    int before;  // texts around the field; 0: none
    int after;
    const char* usual;  // what is offered where something wrong was typed
    const char* wrong;
};
constexpr Row kRows[] = {
    {455, 456, "0", "Uneti broj dana ne predstavlja korektnu numericku vrednost."},
    {458, 0, "18", "Uneta vrednost poreza ne predstavlja korektnu numericku vrednost."},
    {0, 0, "81", "Uneti kupovni kurs ne predstavlja korektnu numericku vrednost."},
};
constexpr char kRateOfNothing[] =
    "Uneti kupovni kurs mora biti veci od nule. U protivnom, sve dinarske cene ce biti = 0.";
constexpr char kAskForUsual[] = "Zelite li da bude upisana podrazumevana vrednost?";

// Days and percents fit 16 bits. What does not is no number to the shop either.
std::optional<qint16> wholeNumber(const QString& text) {
    const std::optional<double> number = platform::readNumber(text);
    if (!number) {
        return std::nullopt;
    }
    const double whole = std::nearbyint(*number);
    if (whole < std::numeric_limits<qint16>::min() || whole > std::numeric_limits<qint16>::max()) {
        return std::nullopt;
    }
    return static_cast<qint16>(whole);
}

// The line that tells what is wrong with the text of a field; nullptr: nothing.
const char* faultOf(std::size_t index, const QString& text) {
    if (index != kRate) {
        return wholeNumber(text) ? nullptr : kRows[index].wrong;
    }
    const std::optional<float> rate = platform::readSingle(text);
    if (!rate) {
        return kRows[index].wrong;
    }
    return *rate > 0 ? nullptr : kRateOfNothing;
}

// Another program's window, or the menu of the field itself, is no leaving.
bool isLeaving(const QEvent& event) {
    if (event.type() != QEvent::FocusOut) {
        return false;
    }
    const Qt::FocusReason reason = static_cast<const QFocusEvent&>(event).reason();
    return reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason;
}

}  // namespace

OptionNumbers::OptionNumbers(QWidget* window) : QObject(window), window_(window) {}

void OptionNumbers::addDaysAndTax(QGridLayout* grid) {
    int labels = 0;
    const auto makeLabel = [&](int textId) {
        auto* label = new QLabel(GetResString(textId), window_);
        label->setObjectName(arrayName("Label1", labels++));
        return label;
    };
    for (const std::size_t index : {kDays, kTax}) {
        const int row = static_cast<int>(index);
        QLabel* before = makeLabel(kRows[index].before);
        QString accessible = spokenCaption(before->text());
        grid->addWidget(before, row, 0);
        if (kRows[index].after != 0) {
            QLabel* after = makeLabel(kRows[index].after);
            accessible += QStringLiteral(" ... ") + after->text();
            grid->addWidget(after, row, 2);
        }
        QLineEdit* field = add(index, accessible);
        before->setBuddy(field);
        grid->addWidget(field, row, 1);
    }
    grid->setHorizontalSpacing(8);
    grid->setColumnStretch(3, 1);
}

QLineEdit* OptionNumbers::addRate(const QString& accessibleName) {
    return add(kRate, accessibleName);
}

QLineEdit* OptionNumbers::add(std::size_t index, const QString& accessibleName) {
    auto* field = new QLineEdit(window_);
    fields_[index] = field;
    field->setObjectName(arrayName("Text1", static_cast<int>(index)));
    field->setAccessibleName(accessibleName);
    field->setAlignment(Qt::AlignRight);
    field->setFixedWidth(window_->fontMetrics().averageCharWidth() * 12);
    field->installEventFilter(this);
    connect(field, &QLineEdit::textChanged, this,
            [this, index](const QString& text) { emit changed(faultOf(index, text) == nullptr); });
    return field;
}

void OptionNumbers::load(const MainOptions& options) {
    const QString texts[] = {QString::number(options.DueDateDiff), QString::number(options.DefaultGST),
                             platform::textOfSingle(KursKupovni)};
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        fields_[i]->setText(texts[i]);
        fields_[i]->setProperty(kTag, QString::fromLatin1(kRows[i].usual));
    }
}

bool OptionNumbers::eventFilter(QObject* watched, QEvent* event) {
    const auto field = std::find(fields_.begin(), fields_.end(), watched);
    const auto index = static_cast<std::size_t>(field - fields_.begin());
    if (event->type() == QEvent::KeyPress &&
        platform::filterNumberKey(**field, *static_cast<QKeyEvent*>(event),
                                  {.decimals = index == kRate, .letterNCounts = index == kRate})) {
        return true;
    }
    if (isLeaving(*event)) {
        left(index);
    }
    return QObject::eventFilter(watched, event);
}

void OptionNumbers::left(std::size_t index) {
    if (asking_ || !window_->isVisible()) {
        return;
    }
    asking_ = true;
    if (!settleOne(index)) {
        fields_[index]->setFocus();
    }
    asking_ = false;
}

bool OptionNumbers::settleOne(std::size_t index) {
    QLineEdit* field = fields_[index];
    const char* fault = faultOf(index, field->text());
    if (fault == nullptr) {
        return true;
    }
    if (!asksForUsual(fault)) {
        return false;
    }
    field->setText(field->property(kTag).toString());
    return true;
}

bool OptionNumbers::asksForUsual(const char* fault) {
    return box(window_, QLatin1String(fault) + QLatin1Char('\n') + QLatin1String(kAskForUsual),
               platform::BoxIcon::Exclamation, platform::BoxButtons::YesNo) == platform::BoxAnswer::Yes;
}

// A change in one field gives OK free again whatever stands in the others, so they are looked at once more.
QLineEdit* OptionNumbers::settle() {
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        if (!fields_[i]->text().trimmed().isEmpty() && !settleOne(i)) {
            return fields_[i];
        }
    }
    return nullptr;
}

void OptionNumbers::takeOver(MainOptions& options) const {
    options.DueDateDiff = wholeNumber(fields_[kDays]->text()).value_or(0);
    options.DefaultGST = wholeNumber(fields_[kTax]->text()).value_or(0);
    KursKupovni = platform::readSingle(fields_[kRate]->text()).value_or(kRateOfBlank);
}

void OptionNumbers::keepRate(platform::Trap& step) const {
    step([&] { settings::setText(settings::KursKupovni, platform::textOfSingle(KursKupovni)); });
}
