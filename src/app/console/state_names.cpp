// Finding a shared variable by its name.
#include "app/console/state_names.h"

#include <QHash>

const std::vector<StateName>& StateNames() {
    static const std::vector<StateName> names = [] {
        std::vector<StateName> all;
        for (const auto& part : {VariableNames(), ThemeNames(), ObjectNames()}) {
            all.insert(all.end(), part.begin(), part.end());
        }
        return all;
    }();
    return names;
}

const StateName* FindStateName(const QString& name) {
    static const QHash<QString, const StateName*> index = [] {
        QHash<QString, const StateName*> rows;
        for (const StateName& row : StateNames()) {
            rows.insert(QString::fromLatin1(row.name), &row);
        }
        return rows;
    }();
    return index.value(name);
}
