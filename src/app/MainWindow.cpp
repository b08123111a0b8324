#include "app/MainWindow.h"

#include "app/AboutDlg.h"
#include "app/AppIcons.h"
#include "app/AppSettings.h"
#include "app/BlkDefFileIO.h"
#include "app/BlockAccessors.h"
#include "app/BlockData.h"
#include "app/Entitlement.h"
#include "app/ErrorListDlg.h"
#include "app/Prompt.h"
#include "app/WaitCursor.h"
#include "authoring/ModParameterDlg.h"
#include "automation/CliControl.h"
#include "authoring/ModelParameterDlg.h"
#include "automation/NewBlockRequest.h"
#include "automation/NewBlkWizard.h"
#include "codegen/CodeFileConversion.h"
#include "codegen/CodeNames.h"
#include "codegen/EncryptFilesDlg.h"
#include "help/ManualTopic.h"
#include "pages/BlkHelpData.h"
#include "pages/CodeConfigDlg.h"
#include "pages/HelpConfigDlg.h"
#include "pages/MiscConfigDlg.h"
#include "pages/PresentationDlg.h"
#include "params/BlkParaData.h"
#include "params/ConfigurationChecks.h"
#include "params/ConfigurationEntities.h"
#include "params/ParameterDlg.h"
#include "schematics/InputOutputDlg.h"

#include <QAction>
#include <QCloseEvent>
#include <QComboBox>
#include <QDesktopServices>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenuBar>
#include <QProcess>
#include <QScrollArea>
#include <QScrollBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>
#include <QUrl>

namespace {

const char kTitle[] = "ZEMA Block Tool";
const int kHardwareTab = 6;

const char *const kTabTitles[] = {"Configuration", "Parameters",   "Parameter Models",
                                  "Initial Conditions", "Presentation", "Schematics",
                                  "Hardware I/O",  "Code",         "Miscellaneous",
                                  "Help"};

AppSettings &Settings()
{
    AppSettings *settings = GlobalSettings();
    return settings ? *settings : *CreateAppSettings(nullptr);
}

int LicenceLevel()
{
    return Settings().licence_level;
}

// The first number of a version text: what a product release and a block library agree on.
int MajorVersion(const QString &version)
{
    return version.section('.', 0, 0).toInt();
}

// Copies `from` into `to`, recursively, file by file; files already there stay.
void CopyTree(const QString &from, const QString &to)
{
    QDir source(from);
    if (!source.exists())
        return;
    QDir().mkpath(to);
    for (const QFileInfo &info : source.entryInfoList(QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot
                                                      | QDir::Hidden)) {
        const QString target = to + "/" + info.fileName();
        if (info.isDir())
            CopyTree(info.filePath(), target);
        else
            QFile::copy(info.filePath(), target);
    }
}

} // namespace

MainWindow::MainWindow(const QString &tool_version, bool cli_on, QWidget *parent)
    : QMainWindow(parent), tool_version(tool_version), cli_on(cli_on)
{
    InitIcons();
    setWindowTitle(kTitle);
    setWindowIcon(QIcon(QStringLiteral(":/icon-logo")));
    resize(1024, 600);
    CreateActions();
    CreateTabs();
    statusBar()->showMessage(QStringLiteral("Ready"));
}

MainWindow::~MainWindow()
{
    delete cli;
    cli = nullptr;
    DeletePages();
    if (block) {
        FreeBlockData(block);
        block = nullptr;
    }
    if (GlobalSettings() && GlobalSettings()->main_window == this)
        GlobalSettings()->main_window = nullptr;
}

QAction *MainWindow::AddAction(QMenu *menu, QToolBar *bar, const QString &text, const QString &icon,
                               const QString &status_tip)
{
    auto *action = new QAction(QIcon(icon), text, this);
    action->setStatusTip(status_tip);
    menu->addAction(action);
    bar->addAction(action);
    return action;
}

void MainWindow::CreateActions()
{
    auto make_bar = [this](const QString &title) {
        QToolBar *bar = addToolBar(title);
        bar->setObjectName(title);
        bar->setIconSize(QSize(24, 24));
        bar->setMovable(false);
        return bar;
    };
    filewiz_bar = make_bar(QStringLiteral("FileWiz"));
    file_bar = make_bar(QStringLiteral("File"));
    edit_bar = make_bar(QStringLiteral("Edit"));
    help_bar = make_bar(QStringLiteral("Help"));
    batch_bar = make_bar(QStringLiteral("Batch"));
    batch_bar->hide();

    filewiz_menu = menuBar()->addMenu(QStringLiteral("&FileWiz"));
    file_menu = menuBar()->addMenu(QStringLiteral("&File"));
    edit_menu = menuBar()->addMenu(QStringLiteral("&Edit"));
    help_menu = menuBar()->addMenu(QStringLiteral("&Help"));
    batch_menu = menuBar()->addMenu(QStringLiteral("&Batch Process"));

    // Triggered signals carry a "checked" flag; the lambdas keep it out of the slots' arguments.
    QAction *wizard = AddAction(filewiz_menu, filewiz_bar, "New (wizard based)", ":/icon-new-wizard",
                                "Create New Block (Wizard Based)");
    connect(wizard, &QAction::triggered, this, [this] { NewWizardAct(); });

    QAction *act = AddAction(file_menu, file_bar, "&New", ":/icon-new", "Create New Block");
    act->setShortcut(QKeySequence::New);
    connect(act, &QAction::triggered, this, [this] { NewAct(); });
    act = AddAction(file_menu, file_bar, "&Open", ":/icon-open", "Open Existing Block");
    act->setShortcut(QKeySequence::Open);
    connect(act, &QAction::triggered, this, [this] { OpenAct(); });
    act = AddAction(file_menu, file_bar, "&Save", ":/icon-save", "Save Changes");
    act->setShortcut(QKeySequence::Save);
    connect(act, &QAction::triggered, this, [this] { SaveAct(); });
    act = AddAction(file_menu, file_bar, "&Close", ":/icon-close", "Close Block");
    act->setShortcut(QKeySequence::Close);
    connect(act, &QAction::triggered, this, [this] { CloseAct(); });

    act = AddAction(edit_menu, edit_bar, "&Validate", ":/icon-validate", "Validate Data");
    connect(act, &QAction::triggered, this, [this] { ValidateAct(); });

    act = AddAction(help_menu, help_bar, "ImageEditor", ":/icon-img-edit", "Open ZEMA Image Editor");
    act->setToolTip(QStringLiteral("Open Image Editor"));
    connect(act, &QAction::triggered, this, [this] { OpenImageEditorAct(); });
    act = AddAction(help_menu, help_bar, "OpenFolder", ":/icon-folder", "Open Block Folder In Explorer");
    act->setToolTip(QStringLiteral("Open In Explorer"));
    connect(act, &QAction::triggered, this, [this] { ShowFolderAct(); });
    act = AddAction(help_menu, help_bar, "&Help", ":/icon-help", "Help");
    act->setShortcut(QKeySequence::HelpContents);
    connect(act, &QAction::triggered, this, [this] { HelpAct(); });
    act = AddAction(help_menu, help_bar, "&About", ":/icon-about", "About ZEMA Block Tool");
    connect(act, &QAction::triggered, this, [this] { AboutAct(); });

    act = AddAction(batch_menu, batch_bar, "&Encrypt Code Files", ":/icon-encrypt", "Encrypt Code Files");
    connect(act, &QAction::triggered, this, [this] { EncryptCodeFilesAct(); });
    act = AddAction(batch_menu, batch_bar, "&Batch Process", ":/icon-batch", "Batch Process");
    connect(act, &QAction::triggered, this, [this] { BatchProcAct(); });

    // The sixth menu shows and hides the tool bars a user works with; "Batch" stays hidden.
    view_menu = menuBar()->addMenu(QStringLiteral("&View"));
    for (QToolBar *bar : {filewiz_bar, file_bar, edit_bar, help_bar})
        view_menu->addAction(bar->toggleViewAction());
}

void MainWindow::CreateTabs()
{
    tabs = new QTabWidget(this);
    tabs->setUsesScrollButtons(true);
    tabs->setTabsClosable(false);
    tabs->setMovable(false);
    tabs->setTabPosition(QTabWidget::North);
    tabs->setTabShape(QTabWidget::Rounded);
    for (const char *title : kTabTitles) {
        auto *area = new QScrollArea(tabs);
        area->setFrameShape(QFrame::NoFrame);
        tabs->addTab(area, QString::fromLatin1(title));
    }
    tabs->setCurrentIndex(0);
    connect(tabs, &QTabWidget::currentChanged, this, &MainWindow::TabPageChanged);
    setCentralWidget(tabs);
}

void MainWindow::LateInitialise()
{
    AppSettings &settings = Settings();
    settings.main_window = this;
    setWindowTitle(BaseTitle());
    error_list = new ErrorListDlg(QStringLiteral("Block Configuration Errors"),
                                  QStringLiteral("Following errors/warnings are found"), QString(), 0,
                                  this);
    initialised = 1;
    last_dir = settings.root_dir;
    PrepareUserDir(&settings);
    if (cli_on)
        cli = new CliControl(this);
}

QString MainWindow::BaseTitle() const
{
    return QString::fromLatin1(kTitle)
           + LicenceTitleSuffix(ReadLicenceToken(Settings().licence_token));
}

QString MainWindow::BlockDir() const
{
    if (block_parent.isEmpty() || block_name.isEmpty())
        return QString();
    return block_parent + "/" + block_name;
}

void MainWindow::PutPage(int tab, QWidget *page)
{
    auto *area = static_cast<QScrollArea *>(tabs->widget(tab));
    area->setWidget(page);
    page->show();
}

void MainWindow::FitPages()
{
    if (!block_open || !tabs->currentWidget())
        return;
    const QSize size = tabs->currentWidget()->size() - QSize(4, 4);
    for (int tab = 0; tab < tabs->count(); ++tab) {
        auto *area = static_cast<QScrollArea *>(tabs->widget(tab));
        QWidget *page = area->widget();
        if (!page)
            continue;
        // A page taller than its tab scrolls down; it then leaves room for the scroll bar, so
        // that it does not scroll sideways as well.
        const QSize least = page->minimumSizeHint();
        QSize fit = size;
        if (least.height() > size.height())
            fit.rwidth() -= area->verticalScrollBar()->sizeHint().width();
        page->resize(fit.expandedTo(least));
    }
}


bool MainWindow::ConfirmClose()
{
    if (!block_open)
        return true;
    if (!Prompt::Question(this, QStringLiteral("Do you want to close existing block configuration."),
                          QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes))
        return false;
    return CloseAct(false, false);
}

void MainWindow::NewAct()
{
    if (!ConfirmClose())
        return;
    block_parent.clear();
    block_name.clear();
    batch_mode = 0;
    OpenProject(QString(), false);
}

void MainWindow::OpenAct()
{
    if (!ConfirmClose())
        return;
    const QString file = Prompt::OpenFileName(this, QStringLiteral("Select Block Definition File"),
                                              last_dir,
                                              QStringLiteral("Block Definition Files (*.bdef)"));
    batch_mode = 0;
    if (!file.isEmpty())
        OpenProjectFile(file);
}

void MainWindow::OpenProjectFile(const QString &fpath)
{
    const QString dir = QDir::fromNativeSeparators(fpath).section('/', 0, -2);
    block_name = dir.section('/', -1);
    block_parent = dir.section('/', 0, -2);
    OpenProject(dir, false);
}

bool MainWindow::OpenProject(const QString &path, bool silent)
{
    if (block_open)
        return false; // a second block would orphan the pages of the first
    error_list->ClearMessages();
    validated = 0;
    block = new BlockData;
    block->path = path;
    if (!path.isEmpty()) {
        if (!LoadBlockData(block, QString(), error_list, QStringLiteral("ZEMA"), silent)) {
            FreeBlockData(block);
            block = nullptr;
            return false;
        }
        last_dir = path.section('/', 0, -2);
    }
    if (path.isEmpty() || !block->def_data) {
        block->def_data = new BlkDefData;
        block->def_data->param_changed = 1;
    }

    BlkParaData *config = LoadConfiguration(path, block);
    // The block owns its Configuration from here; the page only points into it.
    block->config = config;
    const QStringList help_files = block->help ? block->help->file_name : QStringList();
    config_page = new ParameterDlg(false, config, LicenceLevel() >= kVendorLicenceLevel, false, false,
                                   path, QStringLiteral("Parameters"), help_files.value(0));

    if (!path.isEmpty()) {
        if (!AuthenticateOpenBlock(silent)) {
            delete config_page;
            config_page = nullptr;
            FreeBlockData(block);
            block = nullptr;
            return false;
        }
        CheckBlockVersion(silent);
    }
    PutPage(0, config_page);
    CreatePages(path);

    block_open = 1;
    setWindowTitle(QString::fromLatin1(kTitle) + ": " + path);
    tabs->setTabEnabled(kHardwareTab, false);
    pres_page->on_refresh_portnames_pb_clicked();
    // Embedded pages lay themselves out on a resize.
    resize(width() - 1, height() - 1);
    resize(width() + 1, height() + 1);
    FitPages();
    return true;
}

bool MainWindow::AuthenticateOpenBlock(bool silent)
{
    QString reason;
    if (AuthenticateBlock(config_page->data, &reason))
        return true;
    error_list->AddMessage(ErrorList::Error, reason);
    if (!silent && !batch_mode)
        Prompt::Critical(this, reason);
    return false;
}

void MainWindow::CheckBlockVersion(bool silent)
{
    const QString block_version = ToolVersionOf(config_page->data);
    if (block_version.isEmpty())
        return;
    if (!tool_version.isEmpty() && MajorVersion(block_version) <= MajorVersion(tool_version))
        return;
    const QString text =
        QStringLiteral("Block library version is incompatible with current ZEMA version.");
    if (batch_mode)
        error_list->AddMessage(ErrorList::Warning, text);
    else if (!silent)
        Prompt::Warning(this, text);
}


BlkParaData *MainWindow::LoadConfiguration(const QString &path, BlockData *block)
{
    return LoadConfigurationData(path, block, LicenceLevel());
}

void MainWindow::SaveConfiguration(const QString &path, bool renamed, BlockData *block)
{
    if (!config_page)
        return;
    SaveConfigurationData(path, renamed, block, config_page->data, error_list);
    if (renamed)
        ShowEditorText(QStringLiteral("Basic"), QStringLiteral("Block ID"));
}

namespace {

ConfigurationContext ContextOf(ParameterDlg *config_page, BlockData *block, const QString &parent,
                               const QString &name)
{
    ConfigurationContext context;
    context.config = config_page ? config_page->data : nullptr;
    if (block) {
        context.params = block->params;
        context.initconds = block->initconds;
        context.code = block->code;
        context.pres = block->pres;
    }
    context.block_parent = parent;
    context.block_name = name;
    return context;
}

} // namespace

void MainWindow::ValidateConfiguration(ErrorList *list)
{
    if (config_page)
        ValidateConfigurationData(ContextOf(config_page, block, block_parent, block_name), list);
}

void MainWindow::ValidateMemoryEntities(ErrorList *list)
{
    if (config_page)
        ValidateMemoryEntitiesData(ContextOf(config_page, block, block_parent, block_name), list);
}

void MainWindow::ShowEditorText(const QString &header, const QString &label)
{
    ParaEntity *entity = FindEntity(config_page->data, header, label);
    if (auto *edit = qobject_cast<QLineEdit *>(entity ? entity->editor : nullptr))
        edit->setText(entity->sel_val);
}


bool MainWindow::ValidateAct(bool dont_show_warnings, bool silent)
{
    error_list->ClearMessages();
    if (!block_open)
        return true;
    ValidateConfiguration(error_list);
    ValidateMemoryEntities(error_list);
    param_page->ValidateParaPage(error_list);
    model_page->ValidateModels(error_list);
    if (block->initconds && block->params)
        block->initconds->title = block->params->title;
    initcond_page->ValidateParaPage(error_list);
    pres_page->ValidatePresData(error_list);
    // The Schematics page validates here once it exists; Hardware I/O never does.
    code_page->ValidateCodeData(error_list);
    misc_page->ValidateMiscData(error_list);
    help_page->ValidateHelpData(error_list);
    validated = 1;
    if (!silent && !error_list->IsEmpty() && !batch_mode
        && !(dont_show_warnings && !error_list->HasErrors()))
        error_list->ShowMessages();
    return !error_list->HasErrors();
}

bool MainWindow::SaveAct(bool silent)
{
    if (!block_open)
        return false;
    ValidateAct(silent, false);
    if (error_list->HasErrors()) {
        if (!silent)
            Prompt::Critical(this, QStringLiteral("Cannot save data. Block configuration data contains errors."));
        return false;
    }
    if (!silent && error_list->HasWarnings() && !batch_mode
        && Prompt::Ask(this, QStringLiteral("Warnings are present in block configuration data. Press OK to continue saving."),
                       QMessageBox::Ok | QMessageBox::Cancel, QMessageBox::Ok) != QMessageBox::Ok)
        return false;
    QString parent = block_parent;
    if (parent.isEmpty()) {
        parent = Prompt::ExistingDirectory(this, QStringLiteral("Select Block Parent Directory"),
                                           Settings().root_dir);
        if (parent.isEmpty())
            return false;
    }
    // A refused rename or a directory failure still counts as saved for the caller.
    WriteBlock(QDir::fromNativeSeparators(parent), silent);
    return true;
}

bool MainWindow::MakeBlockDirectory(const QString &dir, bool silent)
{
    const QFileInfo parent(dir.section('/', 0, -2));
    if (!parent.isDir() || !parent.isExecutable()) {
        if (!silent)
            Prompt::Critical(this, QStringLiteral("Cannot access selected directory."));
        return false;
    }
    if (!QDir().mkdir(dir)) {
        if (!silent)
            Prompt::Critical(this, QStringLiteral("Cannot create block directory with specified name."));
        return false;
    }
    QDir(dir).mkdir(QStringLiteral("src"));
    QDir(dir).mkdir(QStringLiteral("doc"));
    return true;
}

bool MainWindow::WriteBlock(const QString &parent_dir, bool silent)
{
    if (!config_page)
        return false;
    const QString name = BlockNameOf(config_page->data);
    bool renamed = false;
    if (!block_name.isEmpty() && block_name != name) {
        if (!silent
            && !Prompt::Question(this, QStringLiteral("Specified block directory name does not match with existing directory name. Do you want to save the block data to new directory name."),
                                 QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes))
            return false;
        renamed = true;
    }
    const QString old_dir = BlockDir();
    const QString dir = parent_dir + "/" + name;
    if (!QFileInfo(dir).isDir() && !MakeBlockDirectory(dir, silent))
        return false;
    if (renamed) {
        // Only the folders the new directory has are carried over; the old directory remains.
        for (const QString &sub : QDir(dir).entryList(QDir::Dirs | QDir::NoDotAndDotDot))
            CopyTree(old_dir + "/" + sub, dir + "/" + sub);
    }

    block_parent = parent_dir;
    block_name = name;
    const QString path = QFileInfo(dir).canonicalFilePath();
    if (!block)
        block = new BlockData;
    block->path = path;
    if (!block->def_data)
        block->def_data = new BlkDefData;

    SaveConfiguration(path, renamed, block);
    param_page->SaveParaPage(path, block);
    model_page->SaveModels(path);
    initcond_page->SaveParaPage(path, block);
    pres_page->SavePresData(path, block);
    // The Schematics page stores its data here once it exists.
    hwio_page->SetBlockDir(path);
    code_page->SaveCodeData(path, block);
    misc_page->SaveMiscData(path, block);
    help_page->SaveHelpData(path, block);

    // The drawings are kept by the image editor in the file on disk, never by the pages.
    auto *scratch = new BlockData;
    scratch->path = path;
    LoadBlockData(scratch, QString(), nullptr, QStringLiteral("ZEMA"), true);
    if (scratch->images && !scratch->images->isEmpty()) {
        FreeImageList(block->images);
        block->images = scratch->images;
        scratch->images = nullptr;
    }
    FreeBlockData(scratch);

    block->block_id = BlockIdOf(block->config);
    FillDefaultCodeNames();
    // A failure to write the file itself is told to nobody, and the save still counts.
    SaveBlockData(block, nullptr, QStringLiteral("ZEMA"), true);
    setWindowTitle(QString::fromLatin1(kTitle) + ": " + parent_dir + "/" + name);
    return true;
}

void MainWindow::SetConfigurationChoice(const QString &header, const QString &label, int index)
{
    ParaEntity *entity = FindEntity(config_page->data, header, label);
    if (!entity || index < 0 || index >= entity->values.size())
        return;
    entity->sel_idx = index;
    entity->sel_val = entity->values.at(index);
    // Through the combo, so that its controls over other entities act as for a user's choice.
    if (auto *combo = qobject_cast<QComboBox *>(entity->editor))
        combo->setCurrentIndex(index);
}

bool MainWindow::CreateBlock(const NewBlockRequest &request)
{
    if (!block_open || !config_page)
        return false;
    if (ParaEntity *name = FindEntity(config_page->data, QStringLiteral("Basic"), QStringLiteral("Block Name"))) {
        name->sel_val = request.name;
        ShowEditorText(QStringLiteral("Basic"), QStringLiteral("Block Name"));
    }
    pres_page->SetBlockTitle(request.title);
    SetConfigurationChoice(QStringLiteral("Code-Basic"), QStringLiteral("Embeds other language code"),
                           request.other_language);
    if (!WriteBlock(request.parent_dir, true)) {
        CloseAct(true, false);
        return false;
    }

    param_page->AddParameterGroup(QStringLiteral("Basic"));
    for (const NewBlockPara &para : request.params)
        param_page->AddParameter(QStringLiteral("Basic"), para.label, para.para_var, para.sel_val,
                                 para.values, para.val_type);
    int inputs = 0, outputs = 0;
    for (const NewBlockPort &port : request.ports) {
        pres_page->AddPortRow(port.data_name, port.port_name,
                              port.output ? QStringLiteral("Output") : QStringLiteral("Input"));
        ++(port.output ? outputs : inputs);
    }
    const int extra = qMax(inputs, outputs) - 2;
    if (request.fit_size_to_ports && extra > 0)
        pres_page->SetBlockSize(50, (extra + 5) * 10);

    pres_page->SyncPresData();
    code_page->SyncCodeData();
    for (int i = 0; i < request.ports.size(); ++i)
        code_page->SetPortForm(i, request.ports[i].data_type, request.ports[i].size);

    if (WriteBlock(request.parent_dir, true)) {
        ValidateAct(true, true);
        code_page->on_pb_gen_tmpl_code_clicked();
    }
    CloseAct(true, false);
    return true;
}

void MainWindow::FillDefaultCodeNames()
{
    BlkParaData *config = config_page->data;
    ParaEntity *header = FindEntity(config, QStringLiteral("Code-Basic"), QStringLiteral("Header File Name"));
    if (!header || !header->sel_val.isEmpty() || IsBlockIntrinsic(config))
        return;
    const QString class_name = BlockClassName(config);
    header->sel_val = class_name + ".h";
    ShowEditorText(QStringLiteral("Code-Basic"), QStringLiteral("Header File Name"));
    // Real32 comes twice: the order of the original pass, kept as it is.
    for (const char *kind : {"Real32", "Real64", "Integer16", "Integer32", "Integer64", "Real32"}) {
        const QString label = QStringLiteral("Class/Structure Name (%1)").arg(QLatin1String(kind));
        if (ParaEntity *entity = FindEntity(config, QStringLiteral("Code-Basic"), label)) {
            entity->sel_val = class_name;
            ShowEditorText(QStringLiteral("Code-Basic"), label);
        }
    }
}


void MainWindow::CreatePages(const QString &path)
{
    // Each page loads from the block; those on the parameters share the Parameters page's record.
    param_page = new ModParameterDlg(2);
    param_page->LoadParaPage(path, block);
    PutPage(1, param_page);
    model_page = new ModelParameterDlg(param_page->data);
    PutPage(2, model_page);
    initcond_page = new ModParameterDlg(1);
    initcond_page->LoadParaPage(path, block);
    PutPage(3, initcond_page);
    pres_page = new PresentationDlg(param_page->data);
    pres_page->LoadPresData(path, block);
    PutPage(4, pres_page);
    hwio_page = new InputOutputDlg(0, path);
    PutPage(kHardwareTab, hwio_page);
    code_page = new CodeConfigDlg(this, param_page->data, initcond_page->data);
    code_page->LoadCodeData(path, block);
    PutPage(7, code_page);
    misc_page = new MiscConfigDlg(this);
    misc_page->LoadMiscData(path, block);
    PutPage(8, misc_page);
    help_page = new HelpConfigDlg;
    help_page->LoadHelpData(path, block);
    PutPage(9, help_page);
}

void MainWindow::DeletePages()
{
    // Pages point into the block's records, so they go before the block.
    delete config_page;
    config_page = nullptr;
    delete param_page;
    param_page = nullptr;
    delete model_page;
    model_page = nullptr;
    delete initcond_page;
    initcond_page = nullptr;
    delete pres_page;
    pres_page = nullptr;
    delete hwio_page;
    hwio_page = nullptr;
    delete code_page;
    code_page = nullptr;
    delete misc_page;
    misc_page = nullptr;
    delete help_page;
    help_page = nullptr;
}

bool MainWindow::CloseAct(bool silent, bool def_save)
{
    if (!block_open)
        return true;
    QMessageBox::StandardButton answer = def_save ? QMessageBox::Save : QMessageBox::Discard;
    if (!silent)
        answer = Prompt::Ask(this, QStringLiteral("Do you want to save changes before closing."),
                             QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel,
                             QMessageBox::Save);
    if (answer == QMessageBox::Cancel)
        return false;
    if (answer == QMessageBox::Save)
        SaveAct(silent); // the block closes even when the save was refused
    block_open = 0;
    DeletePages();
    FreeBlockData(block);
    block = nullptr;
    setWindowTitle(BaseTitle());
    return true;
}

void MainWindow::closeEvent(QCloseEvent *event)
{
    // The parent still drives the tool as long as the worker sits in its read.
    if (cli_on && cli && !cli->FinishControl(2500)) {
        Prompt::Warning(this, QStringLiteral("Cannot quit application at this point. CLI control is "
                                             "still active from another application."));
        event->ignore();
        return;
    }
    CloseAct(cli_on, false);
    if (block_open)
        event->ignore();
    else
        event->accept();
}

void MainWindow::resizeEvent(QResizeEvent *event)
{
    QMainWindow::resizeEvent(event);
    FitPages();
}

void MainWindow::ExitAct()
{
    close();
}


void MainWindow::BatchProcAct()
{
    batch_failed.clear();
    if (block_open) {
        Prompt::Critical(this, QStringLiteral("Close present project before proceeding"));
        return;
    }
    const QString root = Prompt::ExistingDirectory(
        this, QStringLiteral("Select Root Directory For Batch Processing"), Settings().root_dir);
    if (root.isEmpty())
        return;
    QStringList files;
    QDirIterator it(root, {QStringLiteral("*.bdef")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext())
        files.append(QDir::fromNativeSeparators(it.next()));
    files.sort();
    if (!Prompt::Question(this, QStringLiteral("Total %1 files found. Do you want to process the files.").arg(files.size()),
                          QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes))
        return;

    batch_mode = 1;
    for (int i = 0; i < files.size(); ++i) {
        OpenProjectFile(files[i]);
        if (!block_open) {
            batch_failed.append(files[i]);
            continue;
        }
        CloseAct(true, false);
        if (block_open) {
            Prompt::Critical(this, QStringLiteral("Cannot close project %1. Aborting batch processing").arg(files[i]));
            batch_failed.append(files.mid(i));
        }
    }
    batch_mode = 0;

    if (batch_failed.isEmpty()) {
        Prompt::Information(this, QStringLiteral("Batch file processing completed."));
        return;
    }
    error_list->ClearMessages();
    for (const QString &file : batch_failed)
        error_list->AddMessage(ErrorList::Error, file);
    // The long-lived list keeps these texts for later validations, as it always has.
    error_list->SetTexts(QStringLiteral("ZEMA"), QStringLiteral("Following files cannot be processed"));
    error_list->ShowMessages();
    error_list->ClearMessages();
}

// The update step of a batch run: a frame kept for later use, never called.
bool MainWindow::BatchProcessUpdation()
{
    return false;
}


void MainWindow::ShowFolderAct()
{
    const QString dir = BlockDir();
    if (!dir.isEmpty())
        QDesktopServices::openUrl(QUrl::fromLocalFile(dir));
}

void MainWindow::OpenImageEditorAct()
{
    const AppSettings &settings = Settings();
    QStringList args{"#" + settings.root_dir, "#" + settings.third_dir};
    if (block_open && block)
        args.append("#" + block->path);
    const QString program = settings.bin_dir + "/ImgEditor";
    if (!QProcess::startDetached(program, args))
        Prompt::Warning(this, QStringLiteral("Cannot start the image editor %1.").arg(program));
}

void MainWindow::NewWizardAct()
{
    if (block_open) {
        Prompt::Critical(this, QStringLiteral("Please close existing project and try again."));
        return;
    }
    block_parent.clear();
    block_name.clear();
    batch_mode = 0;
    NewBlkWizard wizard(this);
    wizard.FillSample();
    Prompt::Exec(&wizard, wizard.Texts());
    if (!wizard.finalized || !ConfirmClose())
        return;
    block_parent.clear();
    block_name.clear();
    OpenProject(QString(), true);
    if (!CreateBlockFromWizard(wizard)) {
        Prompt::Critical(this, QStringLiteral("Block could not be created. Check whether the block path is writable and try again."));
        return;
    }
    QString text = QStringLiteral("Block successfully created. Generated code files are located in 'src' folder of the block's directory.");
    if (wizard.GetOtherLanguageIndex() == 1)
        text += QStringLiteral(" You can now add your python code to .py file in 'src' folder.");
    else if (wizard.GetOtherLanguageIndex() == 2)
        text += QStringLiteral(" You can now add your fortran code to .f90 file in 'src' folder.");
    Prompt::Information(this, text);
    const QString dir = block_name.isEmpty() ? wizard.GetBlockLocation() + "/" + wizard.GetBlockName()
                                             : block_parent + "/" + block_name;
    QDesktopServices::openUrl(QUrl::fromLocalFile(dir));
}

void MainWindow::HelpAct()
{
    ShowManualTopic(Settings().root_dir, 5300, QStringLiteral("topics/Block_Tool.htm"));
}

void MainWindow::AboutAct()
{
    AboutDlg dialog(tool_version, this);
    Prompt::Exec(&dialog, dialog.Texts());
}

// Kept empty: no action is wired to it.
void MainWindow::SaveAsAct() {}

// Kept empty: wired to the tab widget, with nothing to do on a change of tab.
void MainWindow::TabPageChanged(int) {}

void MainWindow::EncryptCodeFilesAct()
{
    if (block_open) {
        Prompt::Critical(this, QStringLiteral("Close present project before proceeding"));
        return;
    }
    EncryptFilesDlg dialog(last_dir, this);
    if (Prompt::Exec(&dialog, dialog.Texts()) != QDialog::Accepted)
        return;
    last_dir = dialog.start_dir;
    if (dialog.settings.path.isEmpty())
        return;
    ConvertCodeFiles(dialog.settings);
}

QString MainWindow::ConvertCodeFiles(const ConversionSettings &settings)
{
    const QString path = QDir::cleanPath(QDir::fromNativeSeparators(settings.path));
    QString target;
    QStringList work;
    if (QFileInfo(path).isDir()) {
        target = ConversionTarget(path, settings.decrypt);
        CopyTreeForConversion(path, target);
        if (settings.decrypt) {
            work = FilesIn(target, settings.subdirs);
        } else {
            // Opening blocks moves the remembered directory; the conversion's own stays.
            const QString kept_dir = last_dir;
            QStringList failed;
            batch_mode = 1;
            for (const QString &file : FilesIn(target, true, {QStringLiteral("*.bdef")})) {
                OpenProjectFile(file);
                if (!block_open) {
                    failed.append(file);
                    continue;
                }
                if (PrefersEncryptedCode(block))
                    work += FilesIn(QFileInfo(file).path() + "/src", settings.subdirs);
                CloseAct(true, false);
                if (block_open) {
                    batch_mode = 0;
                    last_dir = kept_dir;
                    Prompt::Critical(this, QStringLiteral("Cannot close project %1. Aborting encrypt/decrypt files").arg(file));
                    return QString();
                }
            }
            batch_mode = 0;
            last_dir = kept_dir;
            if (!failed.isEmpty()) {
                Prompt::Critical(this, QStringLiteral("Failed to open some block definition files. Aborting encrypt/decrypt files"));
                return QString();
            }
        }
    } else {
        work.append(path);
    }

    WaitCursor wait;
    // Only the copy loses its inputs; the file of a single file run stays beside its result.
    const bool converted = ConvertFileList(work, settings, !target.isEmpty() && !settings.single_file);
    wait.Restore();
    const ConversionMessage message = ClosingMessage(!converted, path, target);
    if (message.kind == ErrorList::Warning)
        Prompt::Warning(this, message.text, message.title);
    else
        Prompt::Information(this, message.text, message.title);
    return message.text;
}

bool MainWindow::CreateBlockFromWizard(const NewBlkWizard &wizard)
{
    NewBlockRequest request;
    request.name = wizard.GetBlockName();
    request.title = wizard.GetBlockTitle();
    request.parent_dir = wizard.GetBlockLocation();
    request.other_language = wizard.GetOtherLanguageIndex();
    NewBlockPara para;
    QString value;
    for (int i = 0; wizard.GetParameter(i, para.label, para.para_var, value, para.values, para.val_type); ++i) {
        para.sel_val = para.values.isEmpty() ? value : QString();
        request.params.append(para);
    }
    NewBlockPort port;
    QString direction;
    for (int i = 0; wizard.GetPort(i, port.data_name, port.port_name, direction, port.data_type, port.size); ++i) {
        // "Input" is the only direction of the combo with "In" in it.
        port.output = !direction.contains(QLatin1String("In"));
        request.ports.append(port);
    }
    return CreateBlock(request);
}
