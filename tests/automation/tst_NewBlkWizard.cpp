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

#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QListWidget>
#include <QUrl>

namespace {

const QString kTitle = QStringLiteral("Wizard to Create a New Block with Basic Features");
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

    void sample()
    {
        static QStringList warnings;
        warnings.clear();
        const QtMessageHandler previous = qInstallMessageHandler(
            [](QtMsgType, const QMessageLogContext &, const QString &text) { warnings << text; });
        NewBlkWizard wizard;
        qInstallMessageHandler(previous);
        QVERIFY2(warnings.filter("connectSlotsByName").isEmpty(), qPrintable(warnings.join('\n')));

        wizard.FillSample();
        QCOMPARE(wizard.GetBlockLocation(), tmp.path() + "/third/blocks");
        QCOMPARE(wizard.ui->cb_location->itemText(1), GlobalSettings()->user_dir + "/blocks");
        QCOMPARE(Params(wizard), (QStringList{kOpMulti, kOffset}));
        wizard.ui->table_ports->SetCellText(0, 4, "two");   // no number: size 1
        QCOMPARE(Ports(wizard), kSamplePorts);

        // Only Finalize ends the wizard: the last page, id 3, has no Finish button.
        wizard.restart();
        for (int i = 0; i < 3; ++i)
            wizard.next();
        QCOMPARE(wizard.currentId(), 3);
        QVERIFY(wizard.button(QWizard::FinishButton)->isHidden());
        wizard.finalized = 1;
    }

    void rows()
    {
        NewBlkWizard wizard;
        wizard.FillSample();
        TableWidget *ports = wizard.ui->table_ports;
        ports->setCurrentCell(0, 0);
        wizard.on_pb_port_up_clicked();   // the first row stays
        wizard.on_pb_port_add_clicked();  // below the current row
        wizard.on_pb_port_dn_clicked();
        QCOMPARE(Ports(wizard), (QStringList{kSamplePorts[0], kSamplePorts[1], "port1||Input|Real|1", kSamplePorts[2]}));
        QCOMPARE(ports->currentRow(), 2);
        ports->setCurrentCell(3, 0);
        wizard.on_pb_port_dn_clicked();   // the last row stays
        QCOMPARE(Ports(wizard).last(), kSamplePorts[2]);

        // A parameter takes its values along when it moves, and the panel stays on it.
        QTableWidget *paras = wizard.ui->table_para;
        wizard.on_pb_en_dn_clicked();
        QCOMPARE(Params(wizard), (QStringList{kOffset, kOpMulti}));
        QCOMPARE(wizard.para_item, paras->item(1, 0));
        wizard.ui->list_values->setCurrentRow(1);
        wizard.on_pb_env_add_clicked();
        QVERIFY(wizard.ui->list_values->item(2)->flags() & Qt::ItemIsEditable);
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
        QTest::addColumn<QString>("value_line");
        QTest::addColumn<QStringList>("list");
        QTest::addColumn<QString>("stored_back");
        QTest::newRow("single") << "sv#2.5#3#Integer" << "2.5||Integer" << "2.5" << QStringList() << "sv#2.5#3#Integer";
        QTest::newRow("empty list entries dropped") << "mv#a||b|#2#Real32" << "|a,b|Real32" << ""
                                                    << QStringList{"a", "b"} << "mv#a|b#2#Real32";
        QTest::newRow("three fields: no value, the panel reads it") << "sv#7#1" << "||" << "7" << QStringList() << "sv#7#1#Real32";
        QTest::newRow("nothing stored") << "" << "||" << "" << QStringList() << "sv##0#Real";
    }

    void valuePanel()
    {
        QFETCH(QString, stored);
        QFETCH(QString, read);
        QFETCH(QString, value_line);
        QFETCH(QStringList, list);
        QFETCH(QString, stored_back);
        NewBlkWizard wizard;
        wizard.FillSample();
        QTableWidget *paras = wizard.ui->table_para;
        paras->item(1, 0)->setData(Qt::UserRole, stored);
        QCOMPARE(Params(wizard).last().section('|', 2), read);
        paras->selectRow(1);
        QCOMPARE(wizard.ui->eb_value->text(), value_line);
        QStringList shown;
        for (int i = 0; i < wizard.ui->list_values->count(); ++i)
            shown << wizard.ui->list_values->item(i)->text();
        QCOMPARE(shown, list);
        paras->selectRow(0);
        QCOMPARE(paras->item(1, 0)->data(Qt::UserRole).toString(), stored_back);
        QCOMPARE(paras->item(0, 0)->data(Qt::UserRole).toString(),
                 QStringLiteral("mv#Addition|Substraction|Multiplication|Division#0#Selected Index"));
    }

    void validation_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("title");
        QTest::addColumn<QStringList>("paras");
        QTest::addColumn<QStringList>("ports");
        QTest::addColumn<QStringList>("sizes");
        QTest::addColumn<bool>("exists");
        QTest::addColumn<QStringList>("messages");
        const QString name = "SampleMathBlock", title = "Sample Math Block";
        const QStringList paras{"a", "b"}, ports{"p", "q"}, sizes{"1", "4"};
        const QString dup_a = "Error: Duplicate parameter name 'a' found";
        QTest::newRow("no parameters, no ports") << name << title << QStringList() << QStringList() << QStringList()
                                                 << false << QStringList();
        QTest::newRow("blank name") << "  " << title << paras << ports << sizes << false
                                    << QStringList{"1. Error: Block name is empty"};
        QTest::newRow("blank inside the name") << "my block" << title << paras << ports << sizes << false
                                               << QStringList{"1. Error: Block name contains white spaces"};
        QTest::newRow("existing directory") << name << title << paras << ports << sizes << true
                                            << QStringList{"1. Warning: Block already exist. It will be overwritten."};
        QTest::newRow("errors before warnings") << name << "" << paras << ports << sizes << true
                                                << QStringList{"1. Error: Block title is empty",
                                                               "2. Warning: Block already exist. It will be overwritten."};
        QTest::newRow("parameter names blank, equal once per pair")
            << name << title << QStringList{"a", " ", "", "a", "a"} << ports << sizes << false
            << QStringList{"1. Error: One of the parameter name is empty", "2. " + dup_a, "3. " + dup_a, "4. " + dup_a};
        QTest::newRow("port names empty, equal") << name << title << paras << QStringList{"p", "", "", "p"}
                                                 << QStringList{"1", "1", "1", "1"} << false
            << QStringList{"1. Error: One of the port name is empty", "2. Error: Duplicate port name 'p' found"};
        QTest::newRow("sizes below one or no number")
            << name << title << paras << QStringList{"p", "q", "r", "s"} << QStringList{"0", "x", "-2", " 3 "}
            << false << QStringList{"1. Error: Port 'p' data size is invalid",
                                    "2. Error: Port 'q' data size is invalid",
                                    "3. Error: Port 'r' data size is invalid"};
    }

    void validation()
    {
        QFETCH(QString, name);
        QFETCH(QString, title);
        QFETCH(QStringList, paras);
        QFETCH(QStringList, ports);
        QFETCH(QStringList, sizes);
        QFETCH(bool, exists);
        QFETCH(QStringList, messages);
        QTemporaryDir location;
        if (exists)
            QVERIFY(QDir(location.path()).mkdir(name));
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

    void finalizeAndClose()
    {
        QTemporaryDir location;
        QVERIFY(QDir(location.path()).mkdir("SampleMathBlock"));
        NewBlkWizard wizard;
        wizard.FillSample();
        wizard.ui->cb_location->setEditText(location.path());
        wizard.on_pb_validate_clicked();
        QVERIFY(!wizard.button(QWizard::FinishButton)->isEnabled());

        // A refused close keeps the wizard; errors keep it open too.
        QSignalSpy finished(&wizard, &QDialog::finished);
        answers->texts.clear();
        answers->buttons = {QMessageBox::No};
        wizard.reject();
        wizard.ui->eb_blk_title->clear();
        wizard.on_pb_finalize_clicked();
        QVERIFY(finished.isEmpty() && !wizard.finalized);
        QCOMPARE(answers->texts.mid(0, 2), (QStringList{
            "Block is still not finalized. Do you really want to close the wizard", kListHead}));

        // Warnings alone pass, and the panel of the selected row is stored on the way out.
        wizard.ui->eb_blk_title->setText("T");
        wizard.ui->table_para->selectRow(1);
        wizard.ui->eb_value->setText("5");
        answers->texts.clear();
        wizard.on_pb_finalize_clicked();
        QCOMPARE(finished.takeFirst(), QVariantList{int(QDialog::Accepted)});
        QVERIFY(wizard.finalized && answers->texts.isEmpty());
        QCOMPARE(Params(wizard).last(), QStringLiteral("Enter Offset (for example)|offset|5||Real"));

        NewBlkWizard other;
        QSignalSpy closed(&other, &QDialog::finished);
        answers->buttons = {QMessageBox::Yes};
        other.reject();
        QCOMPARE(closed.count(), 1);
    }

    void browseAndPortCombos()
    {
        NewBlkWizard wizard;
        wizard.FillSample();
        const QString dir = tmp.path() + "/chosen";
        answers->choices = {{dir}, {dir}, {}};   // the same choice twice, then cancel
        for (int i = 0; i < 3; ++i)
            wizard.on_pb_browse_loc_clicked();
        QCOMPARE(answers->texts.count("Select block location"), 3);
        QCOMPARE(wizard.base_dir, dir);
        QCOMPARE(wizard.ui->cb_location->count(), 3);
        QCOMPARE(wizard.GetBlockLocation(), dir);

        TableWidget *ports = wizard.ui->table_ports;
        ports->CellDoubleClicked(2, 2);   // the first double click in a row only selects it
        ports->CellDoubleClicked(2, 2);
        QVERIFY(ports->combo);
        QCOMPARE(ports->combo->currentText(), QStringLiteral("Output"));
        ports->combo->setCurrentIndex(0);
        ports->OnComboBoxSelectionChanged(0);
        ports->CellDoubleClicked(2, 3);
        QVERIFY(ports->combo);
        QCOMPARE(ports->combo->count(), 8);
        QCOMPARE(Ports(wizard).last(), QStringLiteral("out0||Input|Real|1"));
    }

    void wizardRun_data()
    {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("note");
        QTest::addColumn<QStringList>("suffixes");   // of the generated files
        QTest::newRow("no other language") << 0 << "" << QStringList{".cpp", ".h"};
        QTest::newRow("Python") << 1 << " You can now add your python code to .py file in 'src' folder."
                                << QStringList{".cpp", ".h", ".py"};
        QTest::newRow("Fortran") << 2 << " You can now add your fortran code to .f90 file in 'src' folder."
                                 << QStringList{".cpp", ".h", ".f90"};
    }

    // File > New (wizard based) from the sample to the block on disk with its code.
    void wizardRun()
    {
        QFETCH(int, language);
        QFETCH(QString, note);
        QFETCH(QStringList, suffixes);
        QTemporaryDir root;
        const QString location = root.path() + "/blocks";
        QVERIFY(QDir().mkpath(location));
        answers->exec_script = [&](QDialog *dialog) {
            auto *wizard = qobject_cast<NewBlkWizard *>(dialog);
            if (!wizard)
                return int(QDialog::Accepted);
            wizard->ui->cb_location->setEditText(location);
            wizard->ui->cb_other_lang->setCurrentIndex(language);
            wizard->ui->table_ports->SetCellText(2, 3, "Integer");
            wizard->ui->table_ports->SetCellText(2, 4, "3");
            wizard->on_pb_finalize_clicked();
            return wizard->result();
        };
        opened.clear();
        QDesktopServices::setUrlHandler("file", this, "OpenUrl");
        window->NewWizardAct();
        QDesktopServices::unsetUrlHandler("file");

        const QString dir = location + "/SampleMathBlock";
        QCOMPARE(answers->texts, (QStringList{kTitle, "Block successfully created. Generated code files are located "
                                                      "in 'src' folder of the block's directory." + note}));
        QCOMPARE(opened, QList<QUrl>{QUrl::fromLocalFile(dir)});
        QVERIFY(!window->block_open);

        auto *block = new BlockData;
        block->path = dir;
        const std::unique_ptr<BlockData, void (*)(BlockData *)> owner(block, FreeBlockData);
        QVERIFY(QFileInfo(dir + "/SampleMathBlock.bdef").isFile());
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

        const QString cls = BlockClassName(block->config);
        const QStringList on_disk = QDir(dir + "/src").entryList(QDir::Files);
        for (const QString &suffix : suffixes)
            QVERIFY2(on_disk.contains(cls + suffix), qPrintable(cls + suffix + " missing from " + on_disk.join(", ")));
    }

    void wizardRunRefusals_data()
    {
        QTest::addColumn<QString>("case_name");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("a block is open") << "open" << QStringList{"Please close existing project and try again."};
        QTest::newRow("closed without finalizing") << "closed" << QStringList{kTitle};
        QTest::newRow("location not writable")
            << "file" << QStringList{kTitle, "Block could not be created. Check whether the block path is writable and try again."};
    }

    void wizardRunRefusals()
    {
        QFETCH(QString, case_name);
        QFETCH(QStringList, texts);
        QTemporaryDir root;
        const QString location = root.path() + "/not-a-dir";
        QVERIFY(WriteBytes(location, "x"));
        if (case_name == "open")
            window->NewAct();
        answers->exec_script = [&](QDialog *dialog) {
            auto *wizard = qobject_cast<NewBlkWizard *>(dialog);
            wizard->ui->cb_location->setEditText(case_name == "file" ? location : root.path());
            if (case_name == "file")
                wizard->on_pb_finalize_clicked();
            return int(case_name == "file" ? QDialog::Accepted : QDialog::Rejected);
        };
        window->NewWizardAct();
        QCOMPARE(answers->texts, texts);
        QCOMPARE(bool(window->block_open), case_name == "open");
        QCOMPARE(QDir(root.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries), QStringList{"not-a-dir"});
        window->CloseAct(true, false);
    }
};

ZEMA_TEST(tst_NewBlkWizard)
#include "tst_NewBlkWizard.moc"
