#include "shell/help_file.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QDataStream>
#include <QRegularExpression>
#include <QSet>
#include <algorithm>

namespace {

// The file: these eight bytes, the version of the form, the length of the rest, its SHA-256, and the rest:
// the pages and pictures, packed.
const QByteArray kMagic("TARVHLP\x1a", 8);
constexpr quint32 kVersion = 1;
constexpr qsizetype kDigestSize = 32;
constexpr qsizetype kHeadSize = 8 + 4 + 4 + kDigestSize;

const QRegularExpression& headingPattern() {
    static const QRegularExpression pattern(QStringLiteral("^#{1,6} .*?(?:\\s*\\{#([a-z0-9-]+)\\})?\\s*$"),
                                            QRegularExpression::MultilineOption);
    return pattern;
}

QDataStream& operator<<(QDataStream& out, const HelpPage& page) {
    out << page.id << page.title << page.parent << page.order << page.markdown;
    out << static_cast<quint32>(page.contexts.size());
    for (const HelpPage::Context& context : page.contexts) {
        out << context.number << context.anchor;
    }
    out << static_cast<quint32>(page.keywords.size());
    for (const HelpPage::Keyword& keyword : page.keywords) {
        out << keyword.word << keyword.anchor;
    }
    return out;
}

QDataStream& operator>>(QDataStream& in, HelpPage& page) {
    in >> page.id >> page.title >> page.parent >> page.order >> page.markdown;
    quint32 count = 0;
    in >> count;
    for (quint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
        HelpPage::Context context;
        in >> context.number >> context.anchor;
        page.contexts += context;
    }
    in >> count;
    for (quint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
        HelpPage::Keyword keyword;
        in >> keyword.word >> keyword.anchor;
        page.keywords += keyword;
    }
    return in;
}

// Empty where it is not what was packed. As much room is made as its first four bytes claim to need, so they
// are held against the most that packing saves: a forged claim must not take all of the machine's memory.
QByteArray unpacked(const QByteArray& packed) {
    constexpr qint64 kMostGrowth = 1032;
    quint32 claimed = 0;
    QDataStream(packed) >> claimed;
    return claimed > packed.size() * kMostGrowth ? QByteArray() : qUncompress(packed);
}

QByteArray digestOf(const QByteArray& bytes) {
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

// "501", "503-505" or either with "=anchor".
bool readContexts(const QString& text, QList<HelpPage::Context>& contexts) {
    static const QRegularExpression kEntry(QStringLiteral("^(\\d+)(?:-(\\d+))?(?:=([a-z0-9-]+))?$"));
    for (const QString& entry : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        const QRegularExpressionMatch match = kEntry.match(entry.trimmed());
        if (!match.hasMatch()) {
            return false;
        }
        const int first = match.captured(1).toInt();
        const int last = match.captured(2).isEmpty() ? first : match.captured(2).toInt();
        constexpr int kMostInARow = 1000;
        if (last < first || last - first > kMostInARow) {
            return false;
        }
        for (int number = first; number <= last; ++number) {
            contexts += {number, match.captured(3)};
        }
    }
    return true;
}

void readKeywords(const QString& text, QList<HelpPage::Keyword>& keywords) {
    for (const QString& entry : text.split(QLatin1Char(','), Qt::SkipEmptyParts)) {
        keywords +=
            {entry.section(QLatin1Char('='), 0, 0).trimmed(), entry.section(QLatin1Char('='), 1).trimmed()};
    }
}

bool readHeadLine(const QString& line, HelpPage& page) {
    const QString name = line.section(QLatin1Char(':'), 0, 0).trimmed();
    const QString value = line.section(QLatin1Char(':'), 1).trimmed();
    bool ok = true;
    if (name == QLatin1String("title")) {
        page.title = value;
    } else if (name == QLatin1String("parent")) {
        page.parent = value;
    } else if (name == QLatin1String("order")) {
        page.order = value.toInt(&ok);
    } else if (name == QLatin1String("contexts")) {
        ok = readContexts(value, page.contexts);
    } else if (name == QLatin1String("keywords")) {
        readKeywords(value, page.keywords);
    } else {
        ok = false;
    }
    return ok;
}

}  // namespace

QStringList HelpPage::headingAnchors() const {
    QStringList anchors;
    for (auto match = headingPattern().globalMatch(markdown); match.hasNext();) {
        anchors += match.next().captured(1);
    }
    return anchors;
}

bool HelpPage::hasAnchor(const QString& anchor) const {
    return anchor.isEmpty() || headingAnchors().contains(anchor);
}

QString HelpPage::plainMarkdown() const {
    static const QRegularExpression kMark(QStringLiteral("^(#{1,6} .*?)\\s*\\{#[a-z0-9-]+\\}\\s*$"),
                                          QRegularExpression::MultilineOption);
    return QString(markdown).replace(kMark, QStringLiteral("\\1"));
}

bool HelpBook::parsePage(const QString& id, const QString& source, HelpPage& page, QString& errorText) {
    const QStringList lines = QString(source).remove(QLatin1Char('\r')).split(QLatin1Char('\n'));
    const QString kBorder = QStringLiteral("---");
    if (lines.first().trimmed() != kBorder) {
        errorText = QStringLiteral("line 1: the head of the page, between two lines ---, is missing");
        return false;
    }
    page = HelpPage();
    page.id = id;
    qsizetype at = 1;
    for (; at < lines.size() && lines[at].trimmed() != kBorder; ++at) {
        if (!lines[at].trimmed().isEmpty() && !readHeadLine(lines[at], page)) {
            errorText = QStringLiteral("line %1: not understood: %2").arg(at + 1).arg(lines[at]);
            return false;
        }
    }
    if (at == lines.size() || page.title.isEmpty()) {
        errorText = at == lines.size() ? QStringLiteral("line %1: the head of the page does not end").arg(at)
                                       : QStringLiteral("line %1: the page has no title").arg(at + 1);
        return false;
    }
    page.markdown = lines.mid(at + 1).join(QLatin1Char('\n')).trimmed() + QLatin1Char('\n');
    return true;
}

void HelpBook::add(const HelpPage& page) {
    const auto behind = std::find_if(pages_.begin(), pages_.end(),
                                     [&](const HelpPage& other) { return other.order > page.order; });
    pages_.insert(behind, page);
}

const HelpPage* HelpBook::page(const QString& id) const {
    const auto found =
        std::find_if(pages_.begin(), pages_.end(), [&](const HelpPage& page) { return page.id == id; });
    return found == pages_.end() ? nullptr : &*found;
}

HelpPlace HelpBook::target(int context) const {
    for (const HelpPage& page : pages_) {
        for (const HelpPage::Context& entry : page.contexts) {
            if (entry.number == context) {
                return {page.id, entry.anchor};
            }
        }
    }
    return {};
}

namespace {

// Links and pictures of one page: "[text](place)" and "![text](picture)".
const QRegularExpression& linkPattern() {
    static const QRegularExpression pattern(QStringLiteral("(!?)\\[[^\\]]*\\]\\(([^)\\s]+)\\)"));
    return pattern;
}

QStringList faultsOfLinks(const HelpBook& book, const HelpPage& page) {
    QStringList faults;
    for (auto match = linkPattern().globalMatch(page.markdown); match.hasNext();) {
        const QRegularExpressionMatch link = match.next();
        const QString place = link.captured(2);
        const QString id = place.section(QLatin1Char('#'), 0, 0);
        const HelpPage* target = id.isEmpty() ? &page : book.page(id);
        const bool good = !link.captured(1).isEmpty()
                              ? !book.picture(place).isEmpty()
                              : target != nullptr && target->hasAnchor(place.section(QLatin1Char('#'), 1));
        if (!good) {
            faults += QStringLiteral("%1: leads nowhere: %2").arg(page.id, link.captured(0));
        }
    }
    return faults;
}

QStringList faultsOfAnchors(const HelpPage& page) {
    QStringList faults;
    for (const HelpPage::Context& context : page.contexts) {
        if (!page.hasAnchor(context.anchor)) {
            faults += QStringLiteral("%1: topic %2: no such anchor: %3")
                          .arg(page.id)
                          .arg(context.number)
                          .arg(context.anchor);
        }
    }
    for (const HelpPage::Keyword& keyword : page.keywords) {
        if (!page.hasAnchor(keyword.anchor)) {
            faults += QStringLiteral("%1: keyword %2: no such anchor: %3")
                          .arg(page.id, keyword.word, keyword.anchor);
        }
    }
    QSet<QString> anchors;
    for (const QString& anchor : page.headingAnchors()) {
        if (!anchor.isEmpty() && anchors.contains(anchor)) {
            faults += QStringLiteral("%1: two headings with the anchor %2").arg(page.id, anchor);
        }
        anchors.insert(anchor);
    }
    return faults;
}

}  // namespace

QStringList HelpBook::picturesShown() const {
    QStringList names;
    for (const HelpPage& page : pages_) {
        for (auto match = linkPattern().globalMatch(page.markdown); match.hasNext();) {
            const QRegularExpressionMatch link = match.next();
            if (!link.captured(1).isEmpty()) {
                names += link.captured(2);
            }
        }
    }
    names.removeDuplicates();
    return names;
}

QStringList HelpBook::faults() const {
    QStringList faults;
    QSet<QString> ids;
    QHash<int, QString> tellers;
    for (const HelpPage& page : pages_) {
        if (ids.contains(page.id)) {
            faults += page.id + QStringLiteral(": two pages of this name");
        }
        ids.insert(page.id);
        if (!page.parent.isEmpty() && (this->page(page.parent) == nullptr || page.parent == page.id)) {
            faults += page.id + QStringLiteral(": no such parent: ") + page.parent;
        }
        for (const HelpPage::Context& context : page.contexts) {
            if (tellers.contains(context.number)) {
                faults += QStringLiteral("%1: topic %2 is told in %3 already")
                              .arg(page.id)
                              .arg(context.number)
                              .arg(tellers.value(context.number));
            }
            tellers.insert(context.number, page.id);
        }
        faults += faultsOfAnchors(page) + faultsOfLinks(*this, page);
    }
    return faults;
}

QByteArray HelpBook::toFile() const {
    QByteArray body;
    QDataStream out(&body, QIODevice::WriteOnly);
    out.setVersion(QDataStream::Qt_6_0);
    out << static_cast<quint32>(pages_.size());
    for (const HelpPage& page : pages_) {
        out << page;
    }
    QStringList names = pictures_.keys();
    names.sort();
    out << static_cast<quint32>(names.size());
    for (const QString& name : names) {
        out << name << pictures_.value(name);
    }
    const QByteArray packed = qCompress(body, 9);
    QByteArray file = kMagic;
    QDataStream head(&file, QIODevice::Append);
    head << kVersion << static_cast<quint32>(packed.size());
    return file + digestOf(packed) + packed;
}

bool HelpBook::fromFile(const QByteArray& bytes, QString& errorText) {
    if (!bytes.startsWith(kMagic)) {
        errorText = QStringLiteral("This is not a help file of this program.");
        return false;
    }
    quint32 version = 0;
    quint32 size = 0;
    QDataStream head(bytes.mid(kMagic.size(), 8));
    head >> version >> size;
    if (head.status() == QDataStream::Ok && version != kVersion) {
        errorText = QStringLiteral("This help file was made for another version of the program.");
        return false;
    }
    const QByteArray packed = bytes.mid(kHeadSize);
    HelpBook book;
    bool whole = head.status() == QDataStream::Ok && packed.size() == static_cast<qsizetype>(size) &&
                 digestOf(packed) == bytes.mid(kHeadSize - kDigestSize, kDigestSize);
    if (whole) {
        QDataStream in(unpacked(packed));
        in.setVersion(QDataStream::Qt_6_0);
        quint32 count = 0;
        in >> count;
        for (quint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
            HelpPage page;
            in >> page;
            book.pages_ += page;
        }
        in >> count;
        for (quint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
            QString name;
            QByteArray content;
            in >> name >> content;
            book.pictures_.insert(name, content);
        }
        whole = in.status() == QDataStream::Ok && in.atEnd() && !book.pages_.isEmpty();
    }
    if (!whole) {
        errorText = QStringLiteral("The help file is damaged.");
        return false;
    }
    *this = book;
    return true;
}
