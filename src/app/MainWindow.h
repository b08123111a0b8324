// The program's spine: the open block, its ten pages, and the sequences that bring a block in,
// validate it and write it out. The command interface and the wizard come down the same roads.
#pragma once

#include <QMainWindow>
#include <QString>
#include <QStringList>

class CliControl;
class CodeConfigDlg;
class ErrorList;
class ErrorListDlg;
class HelpConfigDlg;
class InputOutputDlg;
class MiscConfigDlg;
class NewBlkWizard;
class ModelParameterDlg;
class ModParameterDlg;
class ParameterDlg;
class PresentationDlg;
class QAction;
class QMenu;
class QTabWidget;
class QToolBar;
class SchematicsDlg;
struct BlkParaData;
struct BlockData;
struct ConversionSettings;
struct NewBlockRequest;

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    MainWindow(const QString &tool_version, bool cli_on, QWidget *parent = nullptr);
    ~MainWindow() override;

    // Runs once the settings exist: title, error list, user directory, command interface.
    void LateInitialise();

    bool OpenProject(const QString &path, bool silent);
    // True when no block is open afterwards.
    bool ConfirmClose();
    bool WriteBlock(const QString &parent_dir, bool silent);
    // The creation of a whole block on an open empty project, with its generated code; the
    // block is closed afterwards. False when the block directory could not be written.
    bool CreateBlock(const NewBlockRequest &request);
    bool CreateBlockFromWizard(const NewBlkWizard &wizard);
    // The work of EncryptCodeFilesAct once its dialog is answered: the closing message's text, or
    // empty when the run stopped before converting.
    QString ConvertCodeFiles(const ConversionSettings &settings);

    // The Configuration page's four steps; see params/ConfigurationChecks.h.
    BlkParaData *LoadConfiguration(const QString &path, BlockData *block);
    void SaveConfiguration(const QString &path, bool renamed, BlockData *block);
    void ValidateConfiguration(ErrorList *error_list);
    void ValidateMemoryEntities(ErrorList *error_list);

    // The directory of the open block, empty before its first save.
    QString BlockDir() const;

    QString last_dir;
    QString tool_version;
    ErrorListDlg *error_list = nullptr;
    quint8 validated = 0;
    quint8 initialised = 0;
    BlockData *block = nullptr;
    ParameterDlg *config_page = nullptr;
    ModParameterDlg *param_page = nullptr;
    ModelParameterDlg *model_page = nullptr;
    ModParameterDlg *initcond_page = nullptr;
    PresentationDlg *pres_page = nullptr;
    SchematicsDlg *scheme_page = nullptr;
    InputOutputDlg *hwio_page = nullptr;
    CodeConfigDlg *code_page = nullptr;
    MiscConfigDlg *misc_page = nullptr;
    HelpConfigDlg *help_page = nullptr;
    CliControl *cli = nullptr;
    quint8 block_open = 0;
    quint8 batch_mode = 0;
    QToolBar *filewiz_bar = nullptr;
    QToolBar *file_bar = nullptr;
    QToolBar *edit_bar = nullptr;
    QToolBar *help_bar = nullptr;
    QToolBar *batch_bar = nullptr;
    QMenu *filewiz_menu = nullptr;
    QMenu *file_menu = nullptr;
    QMenu *edit_menu = nullptr;
    QMenu *help_menu = nullptr;
    QMenu *batch_menu = nullptr;
    QMenu *view_menu = nullptr;
    QTabWidget *tabs = nullptr;
    QString block_parent;
    QString block_name;
    quint8 cli_on = 0;
    // The files the last batch run could not process.
    QStringList batch_failed;

public slots:
    void ExitAct();
    void NewAct();
    void OpenAct();
    void OpenProjectFile(const QString &fpath);
    bool SaveAct(bool silent = false);
    bool CloseAct(bool silent = false, bool def_save = false);
    bool ValidateAct(bool dont_show_warnings = false, bool silent = false);
    void ShowFolderAct();
    void OpenImageEditorAct();
    void NewWizardAct();
    void SaveAsAct();
    void BatchProcAct();
    void EncryptCodeFilesAct();
    void HelpAct();
    void AboutAct();
    void TabPageChanged(int page);
    bool BatchProcessUpdation();

protected:
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void CreateActions();
    QAction *AddAction(QMenu *menu, QToolBar *bar, const QString &text, const QString &icon,
                       const QString &status_tip);
    void CreateTabs();
    void PutPage(int tab, QWidget *page);
    void FitPages();
    void CheckBlockVersion(bool silent);
    bool AuthenticateOpenBlock(bool silent);
    void FillDefaultCodeNames();
    // A choice of a Configuration combo by index, as if the user had made it.
    void SetConfigurationChoice(const QString &header, const QString &label, int index);
    void ShowEditorText(const QString &header, const QString &label);
    bool MakeBlockDirectory(const QString &dir, bool silent);
    void CreatePages(const QString &path);
    void DeletePages();
    QString BaseTitle() const;
};
