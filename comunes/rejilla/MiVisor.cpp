#include "comunes/rejilla/MiVisor.h"

#include <algorithm>
#include <cmath>

#include "comunes/plataforma/Aviso.h"
#include "comunes/plataforma/Escala.h"
#include "comunes/plataforma/Formatos.h"
#include "comunes/rejilla/Importe.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

constexpr int kTwipsCaracter = 120;
/// Ninguna columna pasa de aquí, ni ningún ancho se dice con más caracteres.
constexpr double kMaximo = 32767;

void crecerHasta(Rejilla& rejilla, int fila, int columna) {
  if (fila >= rejilla.Rows()) rejilla.PonerRows(fila + 1);
  if (columna >= rejilla.Cols()) rejilla.PonerCols(columna + 1);
}

}  // namespace

void PrepararRejilla(Rejilla& rejilla, const QString& especificacion) {
  const bool conBarra = especificacion.contains(u'|') && !especificacion.contains(u';');
  const QChar separador = conBarra ? u'|' : u';';
  QString campos = especificacion;
  if (campos.endsWith(separador)) campos.chop(1);
  const QStringList partes = campos.split(separador);

  const SinRedibujo sinRedibujo(rejilla);
  rejilla.Clear();
  rejilla.PonerCols(static_cast<int>(partes.size()));
  const int ultima = rejilla.FixedRows();
  rejilla.PonerRows(ultima + 1);
  rejilla.PonerRowHeight(ultima, -1);
  rejilla.PonerRowData(ultima, 0);
  for (int c = 0; c < rejilla.Cols(); ++c)
    DefinirColumna(rejilla, 0, c, partes[c]);
}

void DefinirColumna(Rejilla& rejilla, int fila, int columna, const QString& campo) {
  QString titulo = campo;
  int alineacionTitulo = kCentro;
  if (titulo.startsWith(u'<') || titulo.startsWith(u'>')) {
    alineacionTitulo = titulo[0] == u'<' ? kIzquierda : kDerecha;
    titulo.remove(0, 1);
  }
  int alineacion = kIzquierda;
  if (titulo.endsWith(u'=') || titulo.endsWith(u'>')) {
    alineacion = titulo.back() == u'=' ? kCentro : kDerecha;
    titulo.chop(1);
  }
  double caracteres = titulo == u"?" ? 0 : static_cast<double>(titulo.size());
  if (const auto almohadilla = titulo.indexOf(u'#'); almohadilla >= 0) {
    caracteres = std::clamp(Val(titulo.mid(almohadilla + 1)), -kMaximo, kMaximo);
    titulo.truncate(almohadilla);
  }
  const int ancho = static_cast<int>(std::lrint(caracteres * kTwipsCaracter * FactorHorizontal()));

  // El título va primero porque es lo que hace crecer la rejilla.
  PonerCelda(rejilla, fila, columna, titulo);
  rejilla.PonerColWidth(columna, ancho);
  rejilla.PonerColData(columna, ancho);
  rejilla.PonerFixedAlignment(columna, alineacionTitulo);
  rejilla.PonerColAlignment(columna, alineacion);
}

void PonerCelda(Rejilla& rejilla, int fila, int columna, const QString& valor, bool acumular,
                const QString& formato) {
  crecerHasta(rejilla, fila, columna);
  if (!acumular) {
    rejilla.PonerTextMatrix(fila, columna, valor);
    return;
  }
  const SignosNumero signos = SignosNumero::DelUsuario();
  const auto suma = Sumar(LeerImporte(rejilla.TextMatrix(fila, columna), signos), LeerImporte(valor, signos));
  rejilla.PonerTextMatrix(fila, columna, FormatoCelda(suma, false, formato, signos));
}

void InsertarFila(Rejilla& rejilla, int indice) {
  rejilla.AddItem(indice);
}

void QuitarFila(Rejilla& rejilla, int fila) {
  rejilla.RemoveItem(fila);
}

int BuscarColumna(const Rejilla& rejilla, const QString& titulo, bool silencio, int fila) {
  if (titulo.startsWith(u'#')) return static_cast<int>(std::clamp(Val(titulo.mid(1)), -kMaximo, kMaximo));
  for (int c = 0; c < rejilla.Cols(); ++c) {
    if (rejilla.TextMatrix(fila, c) == titulo) return c;
  }
  if (silencio) return -1;
  AvisarPlataforma(GradoAviso::Critico, u"No encontrado ninguna columna con el título ["_s + titulo + u']',
                   u"Búsqueda en ["_s + rejilla.Name() + u']');
  return 0;
}

void EscribirCelda(Rejilla& rejilla, int fila, int columna, const QString& texto, int colorTexto,
                   int colorFondo, const QString& letra, int negrita) {
  crecerHasta(rejilla, fila, columna);
  rejilla.PonerRow(fila);
  rejilla.PonerCol(columna);
  if (!texto.isEmpty()) rejilla.PonerTextMatrix(fila, columna, texto);
  EstiloCelda estilo = rejilla.Estilo(fila, columna);
  if (colorTexto != -1) estilo.ForeColor = colorTexto;
  if (colorFondo != -1) estilo.BackColor = colorFondo;
  if (letra == u"I") estilo.Alineacion = kIzquierda;
  if (letra == u"C") estilo.Alineacion = kCentro;
  if (letra == u"D") estilo.Alineacion = kDerecha;
  if (negrita == 0 || negrita == 1) estilo.Negrita = negrita == 1;
  rejilla.PonerEstilo(fila, columna, estilo);
}

QString SumarColumna(const Rejilla& rejilla, int columna, int desdeFila, int hastaFila, int columnaFiltro,
                     const QString& valorFiltro, bool ceros) {
  const SignosNumero signos = SignosNumero::DelUsuario();
  Diezmilesimas suma = 0;
  for (int f = desdeFila; f <= hastaFila; ++f) {
    if (rejilla.RowHeight(f) < 1 || rejilla.RowData(f) > 0) continue;
    if (columnaFiltro != -1 && rejilla.TextMatrix(f, columnaFiltro) != valorFiltro) continue;
    suma = Sumar(suma, LeerImporte(rejilla.TextMatrix(f, columna), signos));
  }
  return FormatoCelda(suma, ceros, kFormatoImporte, signos);
}

void OcultarColumnas(Rejilla& rejilla, bool mostrarTodas, const QStringList& titulos) {
  const bool conTitulos = rejilla.FixedRows() > 0;
  const auto colorTitulo = [&](int columna, int color) {
    if (!conTitulos) return;
    rejilla.PonerCol(columna);
    EstiloCelda estilo = rejilla.Estilo(0, columna);
    estilo.ForeColor = color;
    rejilla.PonerEstilo(0, columna, estilo);
  };

  rejilla.PonerRow(0);
  const SinRedibujo sinRedibujo(rejilla);
  if (mostrarTodas) {
    for (int c = 0; c < rejilla.Cols(); ++c) {
      rejilla.PonerColWidth(c, rejilla.ColData(c));
      colorTitulo(c, 0);
    }
  }
  for (const QString& titulo : titulos) {
    const int columna = BuscarColumna(rejilla, titulo);
    rejilla.PonerColWidth(columna, 0);
    // Del color del fondo, para que el título no asome.
    colorTitulo(columna, rejilla.BackColor());
  }
}

}  // namespace comunes
