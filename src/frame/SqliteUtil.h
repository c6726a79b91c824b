#pragma once
// The database pelora.db behind one global lock.

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
    /// Fills `model`, which belongs to the caller's thread, with all rows. Empty on any error. Any thread.
    void ExecuteQueryModel(QSqlQueryModel *model, const QString &statement);

private:
    bool createConnection(const QString &connectionName, const QString &fileName);
    bool ensureOpen();

    QSqlDatabase m_db;
    QString m_dbName;
    QString m_connectionName;
};

/// The process's one database object, "pelora.db". Any thread.
SqliteUtil *sqliteUtil();

/// Brings the tables to the present schema; may run at every start.
void createSchema(SqliteUtil *database);

/// `value` made safe between the double quotes of a statement: a quote in it is doubled.
QString sqlText(QString value);
