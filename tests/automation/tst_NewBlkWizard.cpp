// The new block wizard: its sample, its rows, the value panel behind each parameter, its checks,
// and whole runs of File > New (wizard based) that leave a block with generated code on disk.
#include "PageWindow.h"
#include "TestFiles.h"
#include "TestRegistry.h"
#include "ui_NewBlkWizard.h"

#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockData.h"
#include "app/MainWindow.h"
#include "app/Prompt.h"
#include "automation/NewBlkWizard.h"
#include "codegen/CodeNames.h"
#include "pages/BlkCodeData.h"
#include "pages/BlkPresData.h"
#include "pages/TableWidget.h"
#include "params/BlkParaData.h"

#include <QDesktopServices>
#include <QDir>
#include <QListWidget>
#include <QUrl>

namespace {

const QString kTitle = QStringLiteral("Wizard to Create a New Block with Basic Features");
const QString kNotFinalized = QStringLiteral("Block is still not finalized. Do you really want to close the wizard");
const QString kListHead = QStringLiteral("Block Creation Errors: Following errors/warnings are found");
const QString kOpMulti = QStringLiteral("Select Operation (for example)|sel_op||Addition,Substraction,Multiplication,Division|Selected Index");
const QString kOffset = QStringLiteral("Enter Offset (for example)|offset|0.0||Real");
const QStringList kSamplePorts{"in0|i0|Input|Real|1", "in1|i1|Input|Real|1", "out0||Output|Real|1"};

// Each parameter as "name|variable|value|values|type", values joined by ",".
QStringList Params(const NewBlkWizard &wizard)
{
    QStringList rows;
    QString name, variable, value, type;
    QStringList values;
    for (int i = 0; wizard.GetParameter(i, name, variable, value, values, type); ++i)
        rows << QStringList{name, variable, value, values.join(','), type}.join('|');
    return rows;
}

// Each port as "name|visible|direction|type|size".
QStringList Ports(const NewBlkWizard &wizard)
{
    QStringList rows;
    QString name, visible, direction, type;
    int size = 0;
    for (int i = 0; wizard.GetPort(i, name, visible, direction, type, size); ++i)
        rows << QStringList{name, visible, direction, type, QString::number(size)}.join('|');
    return rows;
}

// Replaces the texts of one column, making the rows needed.
void SetColumn(QTableWidget *table, int col, const QStringList &texts)
{
    table->setRowCount(texts.size());
    for (int row = 0; row < texts.size(); ++row)
        table->setItem(row, col, new QTableWidgetItem(texts[row]));
}

} // namespace

class tst_NewBlkWizard : public QObject
{
    Q_OBJECT
    QTemporaryDir tmp;
    std::unique_ptr<PageWindow> page;
    MainWindow *window = nullptr;
    ScriptedAnswerer *answers = nullptr;
    QList<QUrl> opened;

public slots:
    void OpenUrl(const QUrl &url) { opened << url; }

private slots:
    // The application tree holds the Python interface reference files the generation reads.
    void initTestCase()
    {
        QVERIFY(CopyTree(QStringLiteral(ZEMA_APP_DIR "/source"), tmp.path() + "/app/source"));
    }
    void init()
    {
        page = std::make_unique<PageWindow>(tmp.path() + "/app");
        window = page->get();
        answers = page->answers;
        GlobalSettings()->third_dir = tmp.path() + "/third";
    }
    void cleanup() { page.reset(); }

    // The steps in order, from the sample to Finalize, the only way out that needs no question.
    void walkThrough()
    {
        static QStringList warnings;
        warnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { warnings << text; });
        NewBlkWizard wizard;
        qInstallMessageHandler(previous);
        QVERIFY2(warnings.filter("connectSlotsByName").isEmpty(), qPrintable(warnings.join('\n')));
        wizard.FillSample();
        wizard.restart();

        QCOMPARE(wizard.GetBlockLocation(), tmp.path() + "/third/blocks");
        QCOMPARE(wizard.ui->cb_location->itemText(1), GlobalSettings()->user_dir + "/blocks");
        // A new location joins the list once and becomes the start of the next choice.
        const QString dir = tmp.path() + "/chosen";
        answers->choices = {{dir}, {dir}, {}};   // the same choice twice, then cancel
        for (int i = 0; i < 3; ++i)
            wizard.on_pb_browse_loc_clicked();
        QCOMPARE(wizard.ui->cb_location->count(), 3);
        QCOMPARE(wizard.base_dir + "|" + wizard.GetBlockLocation(), dir + "|" + dir);

        wizard.ui->table_ports->SetCellText(0, 4, "two");   // no number: size 1
        QCOMPARE(Ports(wizard), kSamplePorts);
        wizard.ui->table_ports->SetCellText(0, 4, "1");

        for (int i = 0; i < 3; ++i)
            wizard.next();
        QCOMPARE(wizard.currentId(), 3);
        QVERIFY(wizard.button(QWizard::FinishButton)->isHidden());
        wizard.on_pb_validate_clicked();
        QVERIFY(!wizard.button(QWizard::FinishButton)->isEnabled());

        // A refused close keeps the wizard; an error keeps it open too.
        QSignalSpy finished(&wizard, &QDialog::finished);
        answers->texts.clear();
        answers->buttons = {QMessageBox::No};
        wizard.reject();
        wizard.ui->eb_blk_title->clear();
        wizard.on_pb_finalize_clicked();
        QVERIFY(finished.isEmpty() && !wizard.finalized);
        QCOMPARE(answers->texts.mid(0, 2), (QStringList{kNotFinalized, kListHead}));

        // The panel of the selected row is stored on the way out.
        wizard.ui->eb_blk_title->setText("T");
        wizard.ui->table_para->selectRow(1);
        wizard.ui->eb_value->setText("5");
        wizard.on_pb_finalize_clicked();
        QVERIFY(finished.count() == 1 && wizard.finalized);
        QCOMPARE(Params(wizard).last(), QStringLiteral("Enter Offset (for example)|offset|5||Real"));
    }

    void rows()
    {
        NewBlkWizard wizard;
        wizard.FillSample();
        TableWidget *ports = wizard.ui->table_ports;
        ports->setCurrentCell(0, 0);
        wizard.on_pb_port_up_clicked();   // the first row does not move past the end
        wizard.on_pb_port_add_clicked();  // below the current row
        wizard.on_pb_port_dn_clicked();
        QCOMPARE(Ports(wizard), (QStringList{kSamplePorts[0], kSamplePorts[1], "port1||Input|Real|1", kSamplePorts[2]}));
        QCOMPARE(ports->currentRow(), 2);

        // A parameter takes its values along when it moves, and the panel stays on it.
        QTableWidget *paras = wizard.ui->table_para;
        wizard.on_pb_en_dn_clicked();
        QCOMPARE(Params(wizard), (QStringList{kOffset, kOpMulti}));
        QCOMPARE(wizard.para_item, paras->item(1, 0));
        wizard.ui->list_values->setCurrentRow(1);
        wizard.on_pb_env_add_clicked();
        wizard.on_pb_en_add_clicked();    // stores the panel, then selects the new row
        QCOMPARE(Params(wizard).mid(1), (QStringList{
            "Select Operation (for example)|sel_op||Addition,Substraction,itemv2,Multiplication,Division|Selected Index",
            "SamplePara3|samplepara3|||"}));
        QCOMPARE(wizard.para_item, paras->item(2, 0));

        for (int i = 0; i < 3; ++i) {
            paras->setCurrentCell(0, 0);
            wizard.on_pb_en_rem_clicked();
        }
        QVERIFY(paras->rowCount() == 0 && !wizard.para_item);
    }

    void valuePanel_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("read");       // value|values|type from GetParameter
        QTest::addColumn<QString>("stored_back"); // after the panel loaded and stored it
        QTest::newRow("single") << "sv#2.5#3#Integer" << "2.5||Integer" << "sv#2.5#3#Integer";
        QTest::newRow("empty list entries dropped") << "mv#a||b|#2#Real32" << "|a,b|Real32" << "mv#a|b#2#Real32";
        QTest::newRow("three fields: no value, the panel reads it") << "sv#7#1" << "||" << "sv#7#1#Real32";
    }

    void valuePanel()
    {
        QFETCH(QString, stored);
        QFETCH(QString, read);
        QFETCH(QString, stored_back);
        NewBlkWizard wizard;
        wizard.FillSample();
        QTableWidget *paras = wizard.ui->table_para;
        paras->item(1, 0)->setData(Qt::UserRole, stored);
        QCOMPARE(Params(wizard).last().section('|', 2), read);
        paras->selectRow(1);
        paras->selectRow(0);
        QCOMPARE(paras->item(1, 0)->data(Qt::UserRole).toString(), stored_back);
    }

    void validation_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("paras");
        QTest::addColumn<QStringList>("ports");
        QTest::addColumn<QStringList>("sizes");
        QTest::addColumn<QStringList>("messages");
        const QString name = "SampleMathBlock", title = "Sample Math Block";
        const QStringList paras{"a", "b"}, ports{"p", "q"}, sizes{"1", "4"};
        const QString exist = "Warning: Block already exist. It will be overwritten.";
        const QString dup_a = "Error: Duplicate parameter name 'a' found";
        QTest::newRow("no parameters, no ports") << name << title << QStringList() << QStringList() << QStringList()
                                                 << QStringList();
        QTest::newRow("blank name") << "  " << title << paras << ports << sizes << QStringList{"1. Error: Block name is empty"};
        QTest::newRow("existing directory: a warning passes") << "Existing" << title << paras << ports << sizes
                                                              << QStringList{"1. " + exist};
        QTest::newRow("errors before warnings") << "my block" << "" << paras << ports << sizes
            << QStringList{"1. Error: Block name contains white spaces", "2. Error: Block title is empty", "3. " + exist};
        QTest::newRow("parameter names blank, equal once per pair") << name << title << QStringList{"a", " ", "", "a", "a"}
            << ports << sizes << QStringList{"1. Error: One of the parameter name is empty", "2. " + dup_a, "3. " + dup_a, "4. " + dup_a};
        QTest::newRow("port names empty or equal, sizes below one or no number")
            << name << title << paras << QStringList{"p", "", "", "q", "p"} << QStringList{"1", "1", "0", "x", "-2 "}
            << QStringList{"1. Error: One of the port name is empty", "2. Error: Duplicate port name 'p' found",
                           "3. Error: Port '' data size is invalid", "4. Error: Port 'q' data size is invalid",
                           "5. Error: Port 'p' data size is invalid"};
    }

    void validation()
    {
        QFETCH(QString, name);
        QFETCH(QString, title);
        QFETCH(QStringList, paras);
        QFETCH(QStringList, ports);
        QFETCH(QStringList, sizes);
        QFETCH(QStringList, messages);
        QTemporaryDir location;   // holds the blocks "Existing" and "my block"
        QVERIFY(QDir(location.path()).mkdir("Existing") && QDir(location.path()).mkdir("my block"));
        NewBlkWizard wizard;
        wizard.FillSample();
        wizard.ui->eb_blk_name->setText(name);
        wizard.ui->eb_blk_title->setText(title);
        wizard.ui->cb_location->setEditText(location.path());
        wizard.para_item = nullptr;   // rows are replaced under it
        SetColumn(wizard.ui->table_para, 0, paras);
        SetColumn(wizard.ui->table_ports, 0, ports);
        SetColumn(wizard.ui->table_ports, 4, sizes);
        const bool errors = !messages.filter(". Error: ").isEmpty();

        QCOMPARE(wizard.ValidateInput(false), !errors);
        QCOMPARE(answers->texts, messages.isEmpty() ? QStringList() : QStringList{kListHead} + messages);
        // Finalizing shows the list only for errors.
        answers->texts.clear();
        QCOMPARE(wizard.ValidateInput(true), !errors);
        QCOMPARE(answers->texts, errors ? QStringList{kListHead} + messages : QStringList());
    }

    void wizardRun_data()
    {
        QTest::addColumn<QString>("refusal");   // empty: the block is made
        QTest::addColumn<int>("language");
        QTest::addColumn<QStringList>("texts");
        const QString created = "Block successfully created. Generated code files are located in 'src' folder of the block's directory.";
        QTest::newRow("no other language") << "" << 0 << QStringList{kTitle, created};
        QTest::newRow("Python") << "" << 1
            << QStringList{kTitle, created + " You can now add your python code to .py file in 'src' folder."};
        QTest::newRow("Fortran") << "" << 2
            << QStringList{kTitle, created + " You can now add your fortran code to .f90 file in 'src' folder."};
        QTest::newRow("a block is open") << "open" << 0 << QStringList{"Please close existing project and try again."};
        QTest::newRow("closed, the question answered Yes") << "closed" << 0 << QStringList{kTitle, kNotFinalized};
        QTest::newRow("location not writable") << "file" << 0
            << QStringList{kTitle, "Block could not be created. Check whether the block path is writable and try again."};
    }

    // File > New (wizard based) from the sample to the block on disk with its code.
    void wizardRun()
    {
        QFETCH(QString, refusal);
        QFETCH(int, language);
        QFETCH(QStringList, texts);
        QTemporaryDir root;
        QVERIFY(WriteBytes(root.path() + "/file", "x"));
        if (refusal == "open")
            window->NewAct();
        answers->exec_script = [&](QDialog *dialog) {
            auto *wizard = qobject_cast<NewBlkWizard *>(dialog);
            wizard->ui->cb_location->setEditText(root.path() + (refusal == "file" ? "/file" : ""));
            wizard->ui->cb_other_lang->setCurrentIndex(language);
            wizard->ui->table_ports->SetCellText(2, 3, "Integer");
            wizard->ui->table_ports->SetCellText(2, 4, "3");
            refusal == "closed" ? wizard->reject() : wizard->on_pb_finalize_clicked();
            return wizard->result();
        };
        opened.clear();
        QDesktopServices::setUrlHandler("file", this, "OpenUrl");
        window->NewWizardAct();
        QDesktopServices::unsetUrlHandler("file");
        QCOMPARE(answers->texts, texts);
        QCOMPARE(bool(window->block_open), refusal == "open");
        const QString dir = root.path() + "/SampleMathBlock";
        QCOMPARE(opened, refusal.isEmpty() ? QList<QUrl>{QUrl::fromLocalFile(dir)} : QList<QUrl>());
        if (!refusal.isEmpty()) {
            QCOMPARE(QDir(root.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{"file"});
            return;
        }

        auto *block = new BlockData;
        block->path = dir;
        const std::unique_ptr<BlockData, void (*)(BlockData *)> owner(block, FreeBlockData);
        QVERIFY(LoadBlockData(block, QString(), nullptr, "ZEMA", true));
        QCOMPARE(FindEntity(block->config, "Code-Basic", "Embeds other language code")->sel_idx, language);
        QCOMPARE(block->pres->title, QStringLiteral("Sample Math Block"));
        // A single value becomes the selection, a list the values; CreateBlock selects the first.
        const ParaGroup *basic = FindGroup(block->params, "Basic");
        QVERIFY(basic);
        QStringList paras;
        for (const ParaEntity *e : basic->para_entity)
            paras << QStringList{e->label, e->para_var, e->sel_val, e->values.join(','), e->val_type}.join('|');
        QCOMPARE(paras, (QStringList{QString(kOpMulti).replace("||", "|Addition|"), kOffset}));
        QStringList ports;
        for (const BlkPort *port : block->pres->ports)
            ports << port->name + "|" + port->dis_text + "|" + port->type;
        QCOMPARE(ports, (QStringList{"in0|i0|Input", "in1|i1|Input", "out0||Output"}));
        const BlkCodePort *out = block->code->ports.value(2);
        QVERIFY(out && !out->dims.isEmpty());
        QCOMPARE(out->data_type + "|" + out->dims[0]->para1, QStringLiteral("Integer|3"));
        const QString file = dir + "/src/" + BlockClassName(block->config);
        QVERIFY(QFileInfo::exists(file + ".cpp") && QFileInfo::exists(file + QStringList{".h", ".py", ".f90"}[language]));
    }
};

ZEMA_TEST(tst_NewBlkWizard)
#include "tst_NewBlkWizard.moc"
