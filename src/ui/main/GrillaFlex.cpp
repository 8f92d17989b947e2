#include "ui/main/GrillaFlex.h"

#include <QHeaderView>
#include <QScrollBar>
#include <QStyle>
#include <algorithm>

GrillaFlex::GrillaFlex(QWidget *parent) : QTableWidget(parent)
{
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setTabKeyNavigation(false);
    setWordWrap(false);
    verticalHeader()->hide();
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setSectionsClickable(false);
}

void GrillaFlex::setRows(int filas) { setRowCount(std::max(filas, 1) - 1); }

void GrillaFlex::setCols(int columnas)
{
    setColumnCount(columnas);
    anchosTwips_.resize(columnas);
    alineaciones_.resize(columnas);
}

int GrillaFlex::Row() const
{
    if (rowCount() == 0)
        return 0;
    return std::max(currentRow(), 0) + 1;
}

void GrillaFlex::setRow(int fila)
{
    if (fila >= 1 && fila < Rows())
        setCurrentCell(fila - 1, std::max(currentColumn(), 0), QItemSelectionModel::NoUpdate);
}

QString GrillaFlex::TextMatrix(int fila, int col) const
{
    if (fila == 0) {
        const QTableWidgetItem *h = horizontalHeaderItem(col);
        return h ? h->text() : QString();
    }
    const QTableWidgetItem *it = item(fila - 1, col);
    return it ? it->text() : QString();
}

void GrillaFlex::setTextMatrix(int fila, int col, const QString &texto)
{
    if (fila == 0) {
        auto *h = new QTableWidgetItem(texto);
        h->setTextAlignment(Qt::AlignCenter);
        setHorizontalHeaderItem(col, h);
        return;
    }
    auto *it = new QTableWidgetItem(texto);
    it->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
    it->setTextAlignment(alineaciones_.value(col, Qt::AlignCenter));
    setItem(fila - 1, col, it);
}

void GrillaFlex::setColWidth(int col, int twips)
{
    anchosTwips_[col] = twips;
    const int px = qRound(twips / 15.0);
    setColumnHidden(col, px == 0);
    if (px > 0)
        setColumnWidth(col, px);
}

void GrillaFlex::setColAlignment(int col, Qt::Alignment alineacion)
{
    alineaciones_[col] = alineacion;
    for (int r = 0; r < rowCount(); ++r)
        if (QTableWidgetItem *it = item(r, col))
            it->setTextAlignment(alineacion);
}

void GrillaFlex::VaciarFilas() { clearContents(); }

void GrillaFlex::PegarClip(int fila, const QString &clip)
{
    QStringList filas = clip.split(u'\r');
    if (!filas.isEmpty() && filas.last().isEmpty())
        filas.removeLast();
    for (int i = 0; i < filas.size() && fila + i < Rows(); ++i) {
        const QStringList campos = filas[i].split(u'\t');
        for (int c = 0; c < campos.size() && c < Cols(); ++c)
            setTextMatrix(fila + i, c, campos[c]);
    }
}

void GrillaFlex::AjustarAnchos()
{
    // Every row counts, not only those in view, so that no text of the period is cut.
    const QFontMetrics fm(font());
    const int margen = 2 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 8;
    int total = 0;
    for (int c = 0; c < Cols(); ++c) {
        if (isColumnHidden(c))
            continue;
        int ancho = std::max(qRound(anchosTwips_.value(c) / 15.0), horizontalHeader()->sectionSizeHint(c));
        for (int r = 0; r < rowCount(); ++r)
            if (const QTableWidgetItem *it = item(r, c))
                ancho = std::max(ancho, fm.horizontalAdvance(it->text()) + margen);
        setColumnWidth(c, ancho);
        total += ancho;
    }
    // The window keeps room for every column next to the vertical scroll bar.
    setMinimumWidth(total + verticalScrollBar()->sizeHint().width() + 2 * frameWidth());
}

void GrillaFlex::SeleccionarFila(int fila)
{
    if (fila >= 1 && fila < Rows())
        selectRow(fila - 1);
}

bool GrillaFlex::FilaVisible(int fila) const
{
    if (fila < 1 || fila >= Rows())
        return false;
    const QRect r = visualRect(model()->index(fila - 1, 0));
    return r.isValid() && viewport()->rect().contains(r);
}

void GrillaFlex::setTopRow(int fila)
{
    if (fila >= 1 && fila < Rows())
        scrollTo(model()->index(fila - 1, 0), QAbstractItemView::PositionAtTop);
}
