// The OK of the service editor: every field is tried, and all that is wrong is said in one box.
#include <QDate>
#include <QListWidget>
#include <QPlainTextEdit>

#include "common/help.h"
#include "common/modMain.h"
#include "platform/controls/boxes.h"
#include "platform/system/dates.h"
#include "platform/system/numbers.h"
#include "records/frmDetails.h"

namespace {
constexpr int kGSTLimitMessage = 309;
constexpr float kGSTLimit = 100;
}  // namespace

void frmDetails::Failures::add(int field, const QString& text) {
    texts.append(text);
    if (focus < 0) {
        focus = field;
    }
}

void frmDetails::okClicked() {
    commitPicker();
    const Failures failures = validate();
    if (!failures.texts.isEmpty()) {
        platform::showBox(
            {failures.texts.join(QLatin1Char('\n')), GetResString(1), platform::BoxIcon::Exclamation}, this);
        focusField(failures.focus);
        // Whether the field had the focus all along, or gets it only when the window comes forward again
        // behind the box: what is wrong is typed over at once.
        text_[static_cast<size_t>(failures.focus)]->selectAll();
        return;
    }
    cancelled_ = false;
    WinHelp(helpFile(), HELP_QUIT);
    accept();
}

frmDetails::Failures frmDetails::validate() {
    Failures failures;
    validateDates(failures);
    validateNumbers(failures);
    readTypes();
    data_.comments = comments_->toPlainText();
    return failures;
}

void frmDetails::validateDates(Failures& failures) {
    struct DateRule {
        int field, message;
        bool required;
        QString Data::*property;
    };
    static const DateRule kRules[] = {
        {0, 301, true, &Data::started},
        {1, 302, false, &Data::toBeFinished},
        {2, 303, false, &Data::finished},
    };
    for (const DateRule& rule : kRules) {
        const QString text = fieldText(rule.field).trimmed();
        if (const auto date = platform::readDate(text)) {
            data_.*rule.property = platform::textOfDate(*date);
        } else if (text.isEmpty() && !rule.required) {
            data_.*rule.property = QString();
        } else {
            failures.add(rule.field,
                         GetResString(rule.message, {{QStringLiteral("%1"),
                                                      platform::formatShortDate(QDate::currentDate())}}));
        }
    }
}

void frmDetails::validateNumbers(Failures& failures) {
    struct NumberRule {
        int field, message;
        QString Data::*property;
    };
    static const NumberRule kRules[] = {
        {kPrice, 304, &Data::price},
        {kPaid, 305, &Data::paid},
        {kDiscount, 306, &Data::discount},
        {kGST, 308, &Data::gst},
    };
    for (const NumberRule& rule : kRules) {
        const QString text = fieldText(rule.field);
        if (text.trimmed().isEmpty()) {
            data_.*rule.property = QStringLiteral("0");
            continue;
        }
        const auto number = platform::readSingle(text);
        // Discount has no such limit: more than 100 percent off is a gift that the shop does make.
        if (!number) {
            failures.add(rule.field, GetResString(rule.message));
        } else if (rule.field == kGST && *number >= kGSTLimit) {
            failures.add(rule.field, GetResString(kGSTLimitMessage));
        } else {
            data_.*rule.property = platform::textOfSingle(*number);
        }
    }
}

void frmDetails::readTypes() {
    QString types;
    int selected = 0;
    for (int line = 0; line < list_->count(); ++line) {
        if (!list_->item(line)->isSelected()) {
            continue;
        }
        types += QStringLiteral("%1|").arg(line + 1);
        ++selected;
    }
    if (selected == 0) {
        types = QStringLiteral("1");
    }
    // The first kind stands for anything: it says nothing beside a kind that has a name.
    if (selected > 1 && types.startsWith(QLatin1String("1|"))) {
        types.remove(0, 2);
    }
    if (types.endsWith(QLatin1Char('|'))) {
        types.chop(1);
    }
    data_.types = types;
}
