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
    // The columns fill the width (AjustarAnchos); the vertical bar is always there, so
    // the width it leaves does not change with the number of rows, and its thumb stands out
    // from its track.
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    verticalScrollBar()->setStyleSheet(QStringLiteral(
        "QScrollBar:vertical { background: #dcdcdc; width: 16px; margin: 0; border-left: 1px solid #a8a8a8; }"
        "QScrollBar::handle:vertical { background: #5f7890; min-height: 32px; margin: 2px; border-radius: 4px; }"
        "QScrollBar::handle:vertical:hover { background: #3f5870; }"
        "QScrollBar::add-line:vertical, QScrollBar::sub-line:vertical { height: 0; }"
        "QScrollBar::add-page:vertical, QScrollBar::sub-page:vertical { background: none; }"));
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
    it->setToolTip(texto);
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
    // What each visible column needs so that no text of the period is cut: its heading and
    // every row, not only those in view.
    const QFontMetrics fm(font());
    const int margen = 2 * style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, this) + 8;
    necesarios_.fill(0, Cols());
    for (int c = 0; c < Cols(); ++c) {
        if (isColumnHidden(c))
            continue;
        int ancho = horizontalHeader()->sectionSizeHint(c);
        for (int r = 0; r < rowCount(); ++r)
            if (const QTableWidgetItem *it = item(r, c))
                ancho = std::max(ancho, fm.horizontalAdvance(it->text()) + margen);
        necesarios_[c] = ancho;
    }
    repartir_ = true;
    Repartir();
}

void GrillaFlex::Repartir()
{
    QVector<int> visibles;
    int twipsDiseno = 0;
    for (int c = 0; c < Cols(); ++c) {
        if (!isColumnHidden(c)) {
            visibles << c;
            twipsDiseno += std::max(15, anchosTwips_.value(c));
        }
    }
    if (visibles.isEmpty())
        return;
    const int marco = 2 * frameWidth();
    const int barra = verticalScrollBar()->sizeHint().width();
    setMinimumWidth(qRound(twipsDiseno / 15.0) + barra + marco);
    const int disponible = width() - marco - barra;

    // The width is shared in the proportions of the design widths; a column whose share would
    // cut its text keeps what it needs, and the others share the rest.
    QVector<bool> fija(Cols(), false);
    QVector<int> ancho(Cols(), 0);
    for (bool cambio = true; cambio;) {
        cambio = false;
        int resto = disponible;
        int twips = 0;
        for (int c : visibles) {
            if (fija[c])
                resto -= necesarios_.value(c);
            else
                twips += std::max(15, anchosTwips_.value(c));
        }
        for (int c : visibles) {
            if (fija[c]) {
                ancho[c] = necesarios_.value(c);
                continue;
            }
            ancho[c] = twips > 0 ? int(std::max(15, anchosTwips_.value(c)) * double(std::max(resto, 0)) / twips) : 0;
            if (ancho[c] < necesarios_.value(c)) {
                fija[c] = true;
                cambio = true;
            }
        }
    }
    int usado = 0;
    for (int c : visibles)
        usado += ancho[c];
    // What the rounding left goes to the last column, so the columns reach the edge.
    if (usado < disponible)
        ancho[visibles.last()] += disponible - usado;
    for (int c : visibles)
        setColumnWidth(c, ancho[c]);
}

void GrillaFlex::resizeEvent(QResizeEvent *e)
{
    QTableWidget::resizeEvent(e);
    if (repartir_)
        Repartir();
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
