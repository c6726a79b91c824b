#pragma once
// What no machine would forgive. A run that ends with one has failed.

#include <QJsonArray>
#include <QJsonObject>
#include <QString>

class Violations
{
public:
    void add(double seconds, const QString &name, const QString &detail)
    {
        if (m_list.size() < listLimit)
            m_list.append(QJsonObject{{"seconds", seconds}, {"name", name}, {"detail", detail}});
        ++m_count;
    }
    int count() const { return m_count; }
    const QJsonArray &list() const { return m_list; }
    bool contains(const QString &name) const
    {
        for (const QJsonValue &violation : m_list) {
            if (violation.toObject()["name"].toString() == name)
                return true;
        }
        return false;
    }

private:
    static constexpr int listLimit = 1000;
    QJsonArray m_list;
    int m_count = 0;
};
