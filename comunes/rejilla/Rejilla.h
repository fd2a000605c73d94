#pragma once

#include <QString>
#include <functional>
#include <vector>

namespace comunes {

/// Alineaciones, con los números de la rejilla.
inline constexpr int kIzquierda = 1;
inline constexpr int kCentro = 4;
inline constexpr int kDerecha = 7;

/// Altura por defecto de una fila, en twips.
inline constexpr int kAltoFila = 240;

/// Aspecto propio de una celda. Colores en orden azul-verde-rojo; -1 y alineación 0, lo de la rejilla.
struct EstiloCelda {
  int ForeColor = -1;
  int BackColor = -1;
  int Alineacion = 0;
  bool Negrita = false;
};

/// Datos de un listado: celdas, columnas, filas, celda actual y selección. No es ventana: la enseña
/// ModeloRejilla y la imprime ImprimirRejilla. Medidas en twips; filas y columnas desde 0, la fila 0 es la de
/// títulos. Un índice fuera de la rejilla lanza ficheros::ErrorEjecucion 9.
class Rejilla {
 public:
  explicit Rejilla(QString nombre = {});
  Rejilla(const Rejilla&) = delete;
  Rejilla& operator=(const Rejilla&) = delete;

  const QString& Name() const { return nombre_; }
  /// Una letra de tipo por columna: "F" fecha, "I" importe, "#" número, otra cosa o nada, texto.
  const QString& Tag() const { return tag_; }
  void PonerTag(const QString& tag) { tag_ = tag; }

  int Rows() const { return static_cast<int>(filas_.size()); }
  int Cols() const { return static_cast<int>(columnas_.size()); }
  int FixedRows() const { return fijas_; }
  void PonerRows(int filas);
  void PonerCols(int columnas);
  void PonerFixedRows(int fijas);

  const QString& TextMatrix(int fila, int columna) const;
  void PonerTextMatrix(int fila, int columna, const QString& texto);
  EstiloCelda Estilo(int fila, int columna) const;
  void PonerEstilo(int fila, int columna, const EstiloCelda& estilo);

  int ColWidth(int columna) const { return col(columna).ancho; }
  int ColData(int columna) const { return col(columna).dato; }
  int ColAlignment(int columna) const { return col(columna).alineacion; }
  int FixedAlignment(int columna) const { return col(columna).alineacionTitulo; }
  void PonerColWidth(int columna, int twips);
  void PonerColData(int columna, int twips);
  void PonerColAlignment(int columna, int alineacion);
  void PonerFixedAlignment(int columna, int alineacion);

  int RowData(int fila) const { return fil(fila).dato; }
  /// De qué es la fila, en la lista de quien la puso y desde 0, también después de ordenar; -1 si no se ha
  /// dicho.
  int RowItem(int fila) const { return fil(fila).elemento; }
  /// Menos de 1 es una fila oculta.
  int RowHeight(int fila) const { return fil(fila).alto; }
  void PonerRowData(int fila, int dato);
  void PonerRowItem(int fila, int elemento);
  /// Con -1, la altura por defecto.
  void PonerRowHeight(int fila, int twips);

  int BackColor() const { return fondo_; }
  void PonerBackColor(int color);

  int Row() const { return fila_; }
  int Col() const { return columna_; }
  int RowSel() const { return filaSel_; }
  int ColSel() const { return columnaSel_; }
  /// Mover la celda actual recoge la selección en ella.
  void PonerRow(int fila);
  void PonerCol(int columna);
  void PonerRowSel(int fila);
  void PonerColSel(int columna);

  bool Redraw() const { return redibuja_; }
  bool Visible() const { return visible_; }
  /// Con `Redraw` apagado, quien enseña la rejilla no se entera de los cambios hasta que se enciende.
  void PonerRedraw(bool redibuja);
  void PonerVisible(bool visible);

  /// Borra textos y estilos; quedan filas, columnas, medidas y datos.
  void Clear();
  /// Inserta una fila vacía antes de `indice` (o al final, con indice = Rows).
  void AddItem(int indice);
  void RemoveItem(int fila);
  /// Inserta dos filas vacías antes de cada fila de `antesDe` (ascendentes; Rows = al final), de una pasada.
  void InsertarPares(const std::vector<int>& antesDe);
  /// Quita las filas no fijas con `RowData` 1 o más, de una pasada.
  void QuitarMarcadas();
  /// Ordena las filas no fijas por la columna actual: 1 y 2 genérico ascendente y descendente, 5 texto sin
  /// distinguir mayúsculas. Conserva el orden de las iguales. Otro código lanza ErrorEjecucion 5.
  void Sort(int codigo);
  /// Coloca las filas no fijas en el orden dado: la fila i pasa a ser la que era `orden[i]`, desde FixedRows.
  void Reordenar(const std::vector<int>& orden);

  enum class Cambio { Celda, Todo };
  /// Quien enseña la rejilla: recibe qué cambió y, si fue una celda, cuál.
  using Observador = std::function<void(Cambio, int fila, int columna)>;
  void PonerObservador(Observador observador) { observador_ = std::move(observador); }

 private:
  struct Columna {
    int ancho = 960;
    int dato = 0;
    int alineacion = kIzquierda;
    int alineacionTitulo = kIzquierda;
  };
  // Los vectores de una fila llegan solo hasta la última columna escrita.
  struct Fila {
    std::vector<QString> textos;
    std::vector<EstiloCelda> estilos;
    int dato = 0;
    int alto = kAltoFila;
    int elemento = -1;
  };

  const Columna& col(int columna) const;
  Columna& col(int columna);
  const Fila& fil(int fila) const;
  Fila& fil(int fila);
  void ajustarActual();
  void cambio(Cambio que = Cambio::Todo, int fila = -1, int columna = -1);

  QString nombre_;
  QString tag_;
  std::vector<Fila> filas_{2};
  std::vector<Columna> columnas_{2};
  int fijas_ = 1;
  int fondo_ = 0xFFFFFF;
  int fila_ = 1;
  int columna_ = 0;
  int filaSel_ = 1;
  int columnaSel_ = 0;
  bool redibuja_ = true;
  bool visible_ = true;
  bool pendiente_ = false;
  Observador observador_;
};

/// Apaga `Redraw` mientras vive y repone el que había.
class SinRedibujo {
 public:
  explicit SinRedibujo(Rejilla& rejilla) : rejilla_(rejilla), anterior_(rejilla.Redraw()) {
    rejilla_.PonerRedraw(false);
  }
  ~SinRedibujo() { rejilla_.PonerRedraw(anterior_); }
  SinRedibujo(const SinRedibujo&) = delete;
  SinRedibujo& operator=(const SinRedibujo&) = delete;

 private:
  Rejilla& rejilla_;
  bool anterior_;
};

/// Oculta la rejilla mientras vive; después se ve, también si algo se lanzó.
class Oculta {
 public:
  explicit Oculta(Rejilla& rejilla) : rejilla_(rejilla) { rejilla_.PonerVisible(false); }
  ~Oculta() { rejilla_.PonerVisible(true); }
  Oculta(const Oculta&) = delete;
  Oculta& operator=(const Oculta&) = delete;

 private:
  Rejilla& rejilla_;
};

}  // namespace comunes
