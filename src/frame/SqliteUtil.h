#pragma once
// The database pelora.db behind one global lock.

#include "platform/Mutex.h"

#include <QSqlDatabase>
#include <QSqlQueryModel>
#include <QString>

class SqliteUtil
{
public:
    /// Connects to `fileName`. The connection's name is that of the creating thread.
    explicit SqliteUtil(const QString &fileName);
    /// Runs a statement that returns nothing. Errors are swallowed; a thrown exception is logged. Any thread.
    void ExecuteSqlQuery(const QString &statement);
    /// Fills `model`, which belongs to the caller's thread, with a copy of all rows. Empty on any error. The
    /// model's signals come while the lock is held: what listens must not ask the database. Any thread.
    void ExecuteQueryModel(QSqlQueryModel *model, const QString &statement);

private:
    bool createConnection(const QString &connectionName, const QString &fileName) PELORA_REQUIRES(s_mutex);
    bool ensureOpen() PELORA_REQUIRES(s_mutex);

    static Mutex &s_mutex; // GUI, job and remote threads issue statements on the one connection
    QSqlDatabase m_db PELORA_GUARDED_BY(s_mutex);
    const QString m_dbName;
    QString m_connectionName PELORA_GUARDED_BY(s_mutex);
};

/// The process's one database object, "pelora.db". Any thread.
SqliteUtil *sqliteUtil();

/// Brings the tables to the present schema; may run at every start.
void createSchema(SqliteUtil *database);

/// `value` made safe between the double quotes of a statement: a quote in it is doubled.
QString sqlText(QString value);
