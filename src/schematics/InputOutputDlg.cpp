// The Hardware I/O page: a frame with the empty tree of hardware inputs and outputs. Nothing fills
// its rows in this version, and it keeps no data of its own.
#include "schematics/InputOutputDlg.h"

#include "params/TreeWidget.h"

#include <QComboBox>
#include <QTreeWidgetItem>
#include <QVBoxLayout>

InputOutputDlg::InputOutputDlg(int mode, const QString &block_dir, QWidget *parent)
    : QFrame(parent), mode(mode), block_dir(block_dir)
{
    setObjectName(QStringLiteral("InputOutputDlg"));
    resize(900, 600);
    setFrameShape(QFrame::StyledPanel);
    setFrameShadow(QFrame::Raised);
    setWindowTitle(QStringLiteral("Frame"));
    setBackgroundRole(QPalette::Window);
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(5);
    layout->setContentsMargins(5, 5, 5, 5);

    tree = new TreeWidget(this);
    tree->setColumnCount(3);
    tree->setHeaderLabels({QStringLiteral("Description"), QStringLiteral("Type"), QStringLiteral("Enable/Disable")});
    tree->setRootIsDecorated(true);
    tree->setColumnWidth(0, static_cast<int>(width() * 0.6));
    tree->setColumnWidth(1, static_cast<int>(width() * 0.2));
    tree->setColumnWidth(2, 50);
    tree->combo_cols = {2};
    layout->addWidget(tree);
    connect(tree, &TreeWidget::FillComboBox, this, &InputOutputDlg::FillComboBoxData);
}

void InputOutputDlg::SetBlockDir(const QString &dir) { block_dir = dir; }

void InputOutputDlg::FillComboBoxData(QTreeWidgetItem *item, int col, QComboBox *cbox)
{
    if (col == 2)
        cbox->addItems({QStringLiteral("Enable"), QStringLiteral("Disable")});
    tree->setItemWidget(item, col, cbox);
    cbox->setCurrentIndex(cbox->findText(item->text(col), Qt::MatchExactly | Qt::MatchCaseSensitive));
    connect(cbox, QOverload<int>::of(&QComboBox::activated), tree, &TreeWidget::OnComboBoxSelectionChanged,
            Qt::UniqueConnection);
}
