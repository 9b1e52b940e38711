#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>
#include <memory>
#include <string>

#include "data/session.h"
#include "platform/dao/dao.h"
#include "support/delivered_shop.h"
#include "support/own_folder.h"
#include "support/places.h"
#include "support/server_cluster.h"

// The command as people run it: a process of its own without a display, with settings in a folder of the
// test's.
class CommandFixture : public OwnFolderFixture {
 protected:
    struct Answer {
        int status = -1;
        std::string out;
        std::string errors;
    };

    void SetUp() override {
        OwnFolderFixture::SetUp();
        path_ = at("Shop.mdb");
    }

    // A shop at path(), of the delivered ones.
    void deliver(const char* name = "Demo.mdb") { shop_.deliver(name, path_.toStdString()); }
    // The same on a server, and its signpost at path().
    void deliverOnServer(const char* name = "Demo.mdb") {
        deliver(name);
        database_ = std::make_unique<tests::ServerDatabase>();
        const Answer moved =
            run({"move", path_, QString::fromStdString(tests::placeWords(database_->place()))});
        ASSERT_EQ(moved.status, 0) << moved.errors;
    }

    const tests::ServerDatabase& database() const { return *database_; }
    const QString& path() const { return path_; }
    QString at(const char* name) const { return folder_.filePath(QLatin1String(name)); }

    static QString program() { return QString::fromUtf8(tests::kDeliveredFolder) + "/../tarvello-data"; }
    void prepare(QProcess& command) const {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        for (const char* const display : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
            environment.remove(QLatin1String(display));
        }
        environment.insert("XDG_CONFIG_HOME", folder_.path());
        environment.insert("HOME", folder_.path());
        command.setProcessEnvironment(environment);
    }
    static Answer answerOf(QProcess& command) {
        return {command.exitStatus() == QProcess::NormalExit ? command.exitCode() : -1,
                command.readAllStandardOutput().toStdString(), command.readAllStandardError().toStdString()};
    }
    Answer run(const QStringList& words) const {
        QProcess command;
        prepare(command);
        command.start(program(), words);
        EXPECT_TRUE(command.waitForFinished(120000));
        return answerOf(command);
    }

    dao::Database open(const QString& path) const {
        return dao::DBEngine::OpenDatabase(path.toStdString(), false, false, connectText().toStdString());
    }
    std::int64_t rowsOf(dao::Database& database, const char* source) const {
        dao::Recordset rows = database.OpenRecordset(source);
        return rows.RecordCount();
    }
    std::int64_t rowsOf(const QString& path, const char* source) const {
        dao::Database database = open(path);
        const std::int64_t rows = rowsOf(database, source);
        database.Close();
        return rows;
    }

 private:
    tests::DeliveredShop shop_;
    std::unique_ptr<tests::ServerDatabase> database_;
    QString path_;
};
