// The code records of a block: what each port means to the block's code, which run methods the
// class calls when, and the variables of its physical network.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// One dimension of a port.
struct BlkPortDim {
    QString para1;             // the size as typed: a number or a script field
    qint32 array_size = 0;     // its value when it is a number, else 0
};

struct BlkCodePort {
    QString port_name;         // key to the presentation's BlkPort
    QString data_name;
    QString data_type;
    QString mem_type;
    QString mem_alloc;         // decimal index: 0 "By Parent", 1 "By Block", 2 "By Block (User Overidable)"
    QString domain;
    QString units;             // on an output port "$" and a name: the unit of that input port
    QString dim_dependency;
    QString mem_extra;
    QString mem_offset;
    QList<BlkPortDim *> dims;  // owned
    // Working members for the page and the generator; no file holds them.
    qint32 work_flag = 0;
    QString work_type;
    QString work_name;
    QString work_size;
    QStringList work_list;
    QStringList work_items;
    QString work_text;
    QString work_note;
};

// A class run method and the condition under which it is called.
struct BlkCodeFunc {
    QString func_name;
    QString para_grp;
    QString para_en_name;
    QString para_en_val;
    QString port;
    QString dim;               // "=", "<" or ">" and a number
    QString size;
};

// One variable of the physical network, between two physical ports.
struct BlkPhyElement {
    QString port1;
    QString port2;
    QString el_name;
    qint32 el_type = 0;        // 0 "Through(Const.)" .. 3 "Cross/Through(Var.)", 4 "Measuring"
    QString el_mf;             // the n of x10^n
    QString elval_para_grp;
    QString elval_para_en;
    QString elen_para_grp;     // empty: the element always exists
    QString elen_para_en;
    QString elen_para_en_val;
    BlkCodePort *cport1 = nullptr; // records of port1 and port2, run time only, owned by the port list
    BlkCodePort *cport2 = nullptr;
};

struct BlkCodeData {
    quint8 create_inst = 0;
    QList<BlkCodePort *> ports;      // owned, in the order of the presentation's ports
    QList<BlkCodeFunc *> funcs;      // owned
    QList<BlkPhyElement *> elements; // owned
};

// Null for a null record, an empty name or none found.
BlkCodePort *FindCodePort(const BlkCodeData *data, const QString &port_name);
// Points each element at the ports of its two names; null where no port has the name.
void LinkPhyElements(BlkCodeData *data);

// Each frees what it owns, then the record; null is allowed.
void FreeBlkCodePort(BlkCodePort *port);
void FreeBlkCodeData(BlkCodeData *data);
