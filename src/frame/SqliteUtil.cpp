#include "frame/SqliteUtil.h"

#include "frame/Singleton.h"
#include "platform/Log.h"

#include <QSqlDriver>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QSqlResult>
#include <QThread>
#include <QVector>

#include <exception>

// A QSqlQuery holds a statement of the connection for as long as it lives, and a model holds its query. Since
// models live in their callers' threads, outside the lock, each is given its rows as a copy that no longer
// touches the connection.

namespace
{
/// The rows of a finished query.
class RowsResult : public QSqlResult
{
public:
    RowsResult(const QSqlDriver *driver, QSqlQuery &query) : QSqlResult(driver), m_record(query.record())
    {
        while (query.next()) {
            QVector<QVariant> row;
            for (int column = 0; column < m_record.count(); ++column)
                row.append(query.value(column));
            m_rows.append(row);
        }
        setSelect(true);
        setActive(query.isActive());
    }

protected:
    QVariant data(int column) override { return row().value(column); }
    bool isNull(int column) override { return row().value(column).isNull(); }
    bool reset(const QString &) override { return false; }
    bool fetch(int index) override
    {
        if (index < 0 || index >= m_rows.size())
            return false;
        setAt(index);
        return true;
    }
    bool fetchFirst() override { return fetch(0); }
    bool fetchLast() override { return fetch(m_rows.size() - 1); }
    int size() override { return m_rows.size(); }
    int numRowsAffected() override { return -1; }
    QSqlRecord record() const override { return m_record; }

private:
    QVector<QVariant> row() const { return m_rows.value(at()); }

    QSqlRecord m_record;
    QVector<QVector<QVariant>> m_rows;
};
} // namespace

Mutex &SqliteUtil::s_mutex = *new Mutex; // never destroyed: threads use it until the process is gone

SqliteUtil::SqliteUtil(const QString &fileName) : m_dbName(fileName)
{
    MutexLock lock(s_mutex);
    createConnection(QString::asprintf("%p", static_cast<void *>(QThread::currentThread())), m_dbName);
    LOG_WARNING(QStringLiteral("create sqliteutil \n"));
}

bool SqliteUtil::createConnection(const QString &connectionName, const QString &fileName)
{
    m_connectionName = connectionName;
    // The handle that is already held is asked before Qt's list, which gives a connection to its own thread
    // only.
    if (!m_db.isValid()) {
        if (QSqlDatabase::contains(connectionName))
            m_db = QSqlDatabase::database(connectionName, true);
        else
            m_db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connectionName);
    }
    if (m_db.isOpen()) {
        LOG_WARNING(QStringLiteral("open database=%1 not first success!!!").arg(fileName));
        return true;
    }
    m_db.setDatabaseName(fileName);
    if (!m_db.open()) {
        qDebug() << "Open database failed!";
        return false;
    }
    LOG_WARNING(QStringLiteral("open database=%1 first success!").arg(fileName));
    return true;
}

bool SqliteUtil::ensureOpen()
{
    return m_db.isOpen() || createConnection(m_connectionName, m_dbName);
}

void SqliteUtil::ExecuteSqlQuery(const QString &statement)
{
    MutexLock lock(s_mutex);
    if (!ensureOpen())
        return;
    try {
        QSqlQuery query(m_db);
        query.setForwardOnly(true);
        query.exec(statement);
        query.clear();
        query.finish();
    } catch (const std::exception &error) {
        LOG_WARNING(QString::fromLocal8Bit(error.what()));
    }
}

void SqliteUtil::ExecuteQueryModel(QSqlQueryModel *model, const QString &statement)
{
    MutexLock lock(s_mutex);
    model->clear();
    if (!ensureOpen())
        return;
    try {
        qDebug() << statement;
        QSqlQuery query(m_db);
        query.setForwardOnly(true);
        query.exec(statement);
        model->setQuery(QSqlQuery(new RowsResult(m_db.driver(), query)));
        while (model->canFetchMore(QModelIndex()))
            model->fetchMore(QModelIndex());
    } catch (const std::exception &error) {
        LOG_WARNING(QString::fromLocal8Bit(error.what()));
    }
}

namespace
{
struct PeloraDatabase : SqliteUtil {
    PeloraDatabase() : SqliteUtil(QStringLiteral("pelora.db")) {}
};

struct SchemaStatement {
    const char *text; // %1 is the table
    const char *table;
};

// The whole migration: a statement for a column that is there already fails and is passed over. New columns
// are appended here and nothing is ever taken out.
constexpr SchemaStatement schema[] = {
    {"create table if not exists %1(id INTEGER PRIMARY KEY AUTOINCREMENT,StartTime datetime,EndTime datetime,"
     "ModelName vchar(128),SupWax REAL not null,StrWax REAL not null, PrintLayer integer not null, "
     "SumLayer integer not null,StrWaxSn vchar(128),SupWaxSn vchar(128),Upload INTEGER)",
     "PrintHistory"},
    {"create table if not exists  %1(ModelName vchar(128) primary key ,createtime datetime, "
     "status integer not null)",
     "PrintQueue"},
    {"alter table '%1' add PrintMode  vchar(128) default  'xhd'", "PrintHistory"},
    {"alter table '%1' add Volume vchar(32) default  '0x0x0'", "PrintHistory"},
    {"alter table '%1'  add modelMaterialName vchar(128)", "PrintHistory"},
    {"alter table '%1' add Icon vchar(64) default  '0x0x0'", "PrintHistory"},
    {"alter table '%1'  add PrintLayer integer", "PrintQueue"},
    {"alter table '%1'  add SumLayer integer", "PrintQueue"},
    {"alter table '%1'  add StartTime datetime", "PrintQueue"},
    {"alter table '%1'  add EndTime datetime", "PrintQueue"},
    {"alter table '%1'  add Volume vchar(32)", "PrintQueue"},
    {"alter table '%1'  add PrintMode vchar(128)", "PrintQueue"},
    {"alter table '%1'  add SupWax REAL", "PrintQueue"},
    {"alter table '%1'  add StrWax REAL", "PrintQueue"},
    {"alter table '%1'  add modelMaterialName vchar(128)", "PrintQueue"},
    {"alter table '%1'  add printTime  integer", "PrintQueue"},
    {"alter table '%1'  add ID integer", "PrintQueue"},
};
} // namespace

SqliteUtil *sqliteUtil()
{
    return singleton<PeloraDatabase>();
}

void createSchema(SqliteUtil *database)
{
    for (const SchemaStatement &statement : schema)
        database->ExecuteSqlQuery(QString::fromLatin1(statement.text).arg(QLatin1String(statement.table)));
}

QString sqlText(QString value)
{
    return value.replace(QLatin1Char('"'), QLatin1String("\"\""));
}
