// The About box. Its lines are kept as text too, so a headless run can print what it showed.
#include "app/AboutDlg.h"

#include "app/AppIcons.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QIcon>
#include <QLabel>
#include <QVBoxLayout>

AboutDlg::AboutDlg(const QString &tool_version, QWidget *parent) : QDialog(parent)
{
    InitIcons();
    setWindowTitle(tr("About ZEMA Block Tool"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    texts = QStringList{
        QStringLiteral("ZEMA Block Tool"),
        QStringLiteral("Version ") + tool_version,
        QStringLiteral("Creates and edits the blocks of the ZEMA simulation product: their configuration, "
                       "parameters, ports, code and help."),
    };

    auto *logo = new QLabel(this);
    logo->setObjectName(QStringLiteral("lb_logo"));
    logo->setPixmap(QIcon(QStringLiteral(":/icon-logo")).pixmap(64, 64));
    logo->setAlignment(Qt::AlignTop);

    auto *name = new QLabel(texts[0], this);
    QFont bold = name->font();
    bold.setBold(true);
    bold.setPointSizeF(bold.pointSizeF() * 1.3);
    name->setFont(bold);
    auto *version = new QLabel(texts[1], this);
    auto *about = new QLabel(texts[2], this);
    about->setWordWrap(true);
    about->setMinimumWidth(300);

    auto *lines = new QVBoxLayout;
    lines->addWidget(name);
    lines->addWidget(version);
    lines->addSpacing(8);
    lines->addWidget(about);
    lines->addStretch();

    auto *body = new QHBoxLayout;
    body->setSpacing(16);
    body->addWidget(logo);
    body->addLayout(lines, 1);

    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    layout->addLayout(body);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QStringList AboutDlg::Texts() const { return texts; }
