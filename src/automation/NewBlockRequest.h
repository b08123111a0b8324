// What a new block is made of when the wizard or the command interface creates it in one go.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

struct NewBlockPara {
    QString label;
    QString para_var;
    QString sel_val;
    QStringList values;        // empty: a single value
    QString val_type;
};

struct NewBlockPort {
    QString data_name;         // the internal name
    QString port_name;         // the visible text
    bool output = false;
    QString data_type;
    int size = 1;
};

struct NewBlockRequest {
    QString name;
    QString title;
    QString parent_dir;
    int other_language = 0;    // index of "Embeds other language code": 0 "None" .. 3 "Embeds Verilog Code"
    // The command interface makes room for many ports on one side; the wizard keeps the default.
    bool fit_size_to_ports = false;
    QList<NewBlockPara> params;
    QList<NewBlockPort> ports;
};
