#pragma once
// The list grid of the windows: a table with one fixed header row, addressed as the flexible
// grid was. Row 0 is the header row (the table's horizontal header); rows 1 to Rows() - 1
// hold the data. Cells are read-only; selection is by whole rows.

#include <QTableWidget>
#include <QVector>

class GrillaFlex : public QTableWidget
{
    Q_OBJECT
public:
    explicit GrillaFlex(QWidget *parent = nullptr);

    // Rows including the header row: at least 1.
    int Rows() const { return rowCount() + 1; }
    void setRows(int filas);
    int Cols() const { return columnCount(); }
    void setCols(int columnas);

    // The current row (1 or more while there are data rows; 0 when there are none).
    int Row() const;
    void setRow(int fila);

    // Text of a cell; row 0 is the header.
    QString TextMatrix(int fila, int col) const;
    void setTextMatrix(int fila, int col, const QString &texto);

    // Column width in twips (15 twips per pixel); 0 hides the column. The widths are the
    // proportions of the columns: AjustarAnchos spreads the grid's whole width over them.
    void setColWidth(int col, int twips);
    int ColWidthTwips(int col) const { return anchosTwips_.value(col); }
    void setColAlignment(int col, Qt::Alignment alineacion);

    // Empties every data cell.
    void VaciarFilas();
    // Pastes a clip text (fields separated by TAB, rows ended by CR) into the data rows from
    // fila on; fields beyond the last column and rows beyond the last row are dropped.
    void PegarClip(int fila, const QString &clip);
    // From now on the visible columns fill the grid's width in the proportions of their design
    // widths and follow the grid when it is resized; a column whose share would cut its
    // heading or a text of its rows keeps the width they need, and the others share the rest.
    // The grid is never narrower than the design widths themselves; when the texts need more
    // than the grid has, a horizontal bar appears. Every cell's text is also its tooltip.
    void AjustarAnchos();

    // Selects the whole row (column 0 to the last column).
    void SeleccionarFila(int fila);
    bool FilaVisible(int fila) const;
    void setTopRow(int fila);

protected:
    void resizeEvent(QResizeEvent *e) override;

private:
    void Repartir();
    bool repartir_ = false;
    QVector<int> necesarios_;
    QVector<int> anchosTwips_;
    QVector<Qt::Alignment> alineaciones_;
};
