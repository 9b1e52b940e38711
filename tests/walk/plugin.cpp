#include <QCoreApplication>
#include <QGenericPlugin>
#include <QStringList>
#include <QTimer>

#include "walker.h"

void walkFirstDay(Walker& walker);
void walkSecondDay(Walker& walker);
void walkThirdDay(Walker& walker, const QString& papers);
void walkFourthDay(Walker& walker, const QString& papers);
void walkToAnEnd(Walker& walker, const QString& where);

// Loaded into the program by QT_QPA_GENERIC_PLUGINS="walk:DAY:PICTURES:FIRST": the day to walk, the folder
// for the pictures, the number of the first of them. In the place of a day: "ending-" and where the end is to
// come.
class WalkPlugin : public QGenericPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QGenericPluginFactoryInterface_iid FILE "walk.json")
 public:
    QObject* create(const QString& name, const QString& order) override {
        const QStringList words = order.split(QLatin1Char(':'));
        if (name.compare(QLatin1String("walk"), Qt::CaseInsensitive) != 0 || words.size() < 3) {
            return nullptr;
        }
        auto* walker = new Walker(words.at(1), words.at(2).toInt());
        if (words.at(0) == QLatin1String("first")) {
            walkFirstDay(*walker);
        } else if (words.at(0) == QLatin1String("second")) {
            walkSecondDay(*walker);
        } else if (words.at(0) == QLatin1String("third")) {
            walkThirdDay(*walker, words.at(1));
        } else if (const QString ending = QStringLiteral("ending-"); words.at(0).startsWith(ending)) {
            walkToAnEnd(*walker, words.at(0).mid(ending.size()));
        } else {
            walkFourthDay(*walker, words.at(1));
        }
        walker->start();
        return walker;
    }
};

#include "plugin.moc"
