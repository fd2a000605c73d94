#include "comunes/rejilla/Orden.h"

#include <algorithm>
#include <numeric>
#include <optional>

#include "comunes/plataforma/Formatos.h"
#include "comunes/rejilla/ClaveTexto.h"
#include "comunes/rejilla/Importe.h"
#include "ficheros/ErrorEjecucion.h"

namespace comunes {

using namespace Qt::StringLiterals;

namespace {

/// Rojo y negro, en orden azul-verde-rojo.
constexpr int kRojo = 255;
constexpr int kNegro = 0;

/// Ordena muchas filas por partes: las claves de todas no caben en la caché del procesador, y las de cada
/// parte sí.
template <class Menor>
void ordenarPorPartes(std::vector<int>& orden, const Menor& menor) {
  constexpr std::size_t kPartes = 1024;
  std::vector<int> cortes;
  for (std::size_t i = 1; i < kPartes; ++i)
    cortes.push_back(orden[i * orden.size() / kPartes]);
  std::sort(cortes.begin(), cortes.end(), menor);
  std::vector<std::vector<int>> partes(kPartes);
  for (const int fila : orden) {
    const auto corte = std::upper_bound(cortes.begin(), cortes.end(), fila, menor);
    partes[static_cast<std::size_t>(corte - cortes.begin())].push_back(fila);
  }
  orden.clear();
  for (std::vector<int>& parte : partes) {
    std::stable_sort(parte.begin(), parte.end(), menor);
    orden.insert(orden.end(), parte.begin(), parte.end());
  }
}

/// Reordena las filas no fijas, de orden estable. `menor(fila, otra)` dice si la primera va delante.
template <class Menor>
void ordenarPor(Rejilla& rejilla, const Menor& menor) {
  constexpr std::size_t kMuchas = 20'000;
  std::vector<int> orden(static_cast<std::size_t>(rejilla.Rows() - rejilla.FixedRows()));
  std::iota(orden.begin(), orden.end(), rejilla.FixedRows());
  if (orden.size() > kMuchas)
    ordenarPorPartes(orden, menor);
  else
    std::stable_sort(orden.begin(), orden.end(), menor);
  rejilla.Reordenar(orden);
}

/// Lo vacío va delante de los números y estos delante de los textos.
struct Clave {
  enum { Vacia, Numero, Texto } clase = Vacia;
  double numero = 0;
  std::size_t texto = 0;
};

qsizetype repeticiones(const QString& formato, qsizetype desde) {
  qsizetype veces = 1;
  while (desde + veces < formato.size() && formato[desde + veces].toLower() == formato[desde].toLower())
    ++veces;
  return veces;
}

/// Quita de `resto` un número de a lo más `ancho` cifras; -1 si no empieza por ninguna.
int quitarNumero(QStringView& resto, qsizetype ancho) {
  qsizetype cifras = 0;
  while (cifras < std::min(ancho, resto.size()) && resto[cifras] >= u'0' && resto[cifras] <= u'9')
    ++cifras;
  const int valor = cifras == 0 ? -1 : resto.first(cifras).toInt();
  resto = resto.sliced(cifras);
  return valor;
}

/// Quita de `resto` el nombre de un mes; 0 si no empieza por ninguno.
int quitarMes(QStringView& resto, bool corto) {
  for (int mes = 1; mes <= 12; ++mes) {
    const QString nombre = NombreMes(mes, corto);
    if (!resto.startsWith(nombre, Qt::CaseInsensitive)) continue;
    resto = resto.sliced(nombre.size());
    return mes;
  }
  return 0;
}

/// La fecha que FormatoFechaLibre escribió con ese formato; sin día o mes, el primero; sin año, el actual.
std::optional<QDate> leerConFormato(const QString& texto, const QString& formato) {
  QStringView resto(texto);
  int dia = 1;
  int mes = 1;
  int ano = FechaActual().year();
  for (qsizetype i = 0, veces = 0; i < formato.size(); i += veces) {
    const QChar letra = formato[i].toLower();
    veces = repeticiones(formato, i);
    if (letra == u'd') {
      dia = quitarNumero(resto, 2);
    } else if (letra == u'm') {
      mes = veces <= 2 ? quitarNumero(resto, 2) : quitarMes(resto, veces == 3);
    } else if (letra == u'y') {
      ano = quitarNumero(resto, veces <= 2 ? 2 : 4);
      if (ano >= 0 && veces <= 2) ano += ano < 30 ? 2000 : 1900;
    } else if (resto.startsWith(QStringView(formato).sliced(i, veces))) {
      resto = resto.sliced(veces);
    } else {
      return std::nullopt;
    }
  }
  // Como en LeerFecha, un año de menos de tres cifras no lo es; sin ninguna, tampoco.
  constexpr int kPrimerAno = 100;
  const QDate fecha(ano, mes, dia);
  if (!resto.isEmpty() || ano < kPrimerAno || !fecha.isValid()) return std::nullopt;
  return fecha;
}

/// La fecha de una celda, también si ya está escrita con el formato en que se va a dejar: ordenar dos veces
/// ha de dar lo mismo.
std::optional<QDate> fechaDe(const QString& celda, const QString& formato) {
  auto fecha = LeerFecha(celda);
  if (!fecha) fecha = leerConFormato(celda, formato);
  if (!fecha) fecha = leerConFormato(celda, u"dd mmm yyyy"_s);
  return fecha;
}

void ordenarImportes(Rejilla& rejilla, int columna) {
  const SignosNumero signos = SignosNumero::DelUsuario();
  std::vector<Diezmilesimas> importes(static_cast<std::size_t>(rejilla.Rows()));
  for (int f = rejilla.FixedRows(); f < rejilla.Rows(); ++f) {
    const auto importe = LeerImporte(rejilla.TextMatrix(f, columna), signos);
    importes[static_cast<std::size_t>(f)] = importe;
    rejilla.PonerTextMatrix(f, columna, FormatoCelda(importe, false, kFormatoImporte, signos));
  }
  ordenarPor(rejilla, [&](int a, int b) {
    return importes[static_cast<std::size_t>(a)] < importes[static_cast<std::size_t>(b)];
  });
}

void marcarTitulo(Rejilla& rejilla, int ordenada) {
  if (rejilla.FixedRows() < 1) return;
  for (int c = 0; c < rejilla.Cols(); ++c) {
    EstiloCelda estilo = rejilla.Estilo(0, c);
    estilo.ForeColor = c == ordenada ? kRojo : kNegro;
    rejilla.PonerEstilo(0, c, estilo);
  }
}

}  // namespace

void Rejilla::Sort(int codigo) {
  if (codigo != 1 && codigo != 2 && codigo != 5) throw ficheros::ErrorEjecucion(ficheros::kArgumentoNoValido);
  const SignosNumero signos = SignosNumero::DelUsuario();
  ClavesTexto textos(LocaleUsuario());
  std::vector<Clave> claves(filas_.size());
  for (int f = fijas_; f < Rows(); ++f) {
    const QString& texto = TextMatrix(f, columna_);
    Clave& clave = claves[static_cast<std::size_t>(f)];
    if (texto.isEmpty()) continue;
    if (const auto numero = codigo == 5 ? std::nullopt : NumeroEntero(texto, signos)) {
      clave.clase = Clave::Numero;
      clave.numero = *numero;
    } else {
      clave.clase = Clave::Texto;
      clave.texto = textos.anadir(texto);
    }
  }
  const auto menor = [&](int a, int b) {
    const Clave& una = claves[static_cast<std::size_t>(a)];
    const Clave& otra = claves[static_cast<std::size_t>(b)];
    if (una.clase != otra.clase) return una.clase < otra.clase;
    return una.clase == Clave::Numero ? una.numero < otra.numero
                                      : una.clase == Clave::Texto && textos.menor(una.texto, otra.texto);
  };
  if (codigo == 2) {
    ordenarPor(*this, [&](int a, int b) { return menor(b, a); });
  } else {
    ordenarPor(*this, menor);
  }
}

void OrdenarFechas(Rejilla& rejilla, int columna, const QString& formato) {
  std::vector<QDate> fechas(static_cast<std::size_t>(rejilla.Rows()));
  for (int f = rejilla.FixedRows(); f < rejilla.Rows(); ++f) {
    const auto fecha = fechaDe(rejilla.TextMatrix(f, columna), formato);
    if (fecha) fechas[static_cast<std::size_t>(f)] = *fecha;
    rejilla.PonerTextMatrix(f, columna, fecha ? FormatoFechaLibre(*fecha, formato) : QString());
  }
  ordenarPor(rejilla, [&](int a, int b) {
    return fechas[static_cast<std::size_t>(a)] < fechas[static_cast<std::size_t>(b)];
  });
}

QString FormatoFechaLibre(const QDate& fecha, const QString& formato) {
  QString texto;
  for (qsizetype i = 0, veces = 0; i < formato.size(); i += veces) {
    const QChar letra = formato[i].toLower();
    veces = repeticiones(formato, i);
    const auto cifras = [&](int valor, int ancho) { texto += u"%1"_s.arg(valor, ancho, 10, QChar(u'0')); };
    if (letra == u'd') {
      cifras(fecha.day(), veces == 1 ? 1 : 2);
    } else if (letra == u'm' && veces <= 2) {
      cifras(fecha.month(), static_cast<int>(veces));
    } else if (letra == u'm') {
      texto += NombreMes(fecha.month(), veces == 3);
    } else if (letra == u'y') {
      veces <= 2 ? cifras(fecha.year() % 100, 2) : cifras(fecha.year(), 4);
    } else {
      texto += formato.mid(i, veces);
    }
  }
  return texto;
}

void OrdenarColumna(Rejilla& rejilla, int columna, bool marcar, int nuevaColumna) {
  const int columnaAnterior = rejilla.Col();
  const SinRedibujo sinRedibujo(rejilla);
  if (columna != -1) rejilla.PonerCol(columna);
  const int ordenada = rejilla.Col();
  const QChar letra = ordenada < rejilla.Tag().size() ? rejilla.Tag()[ordenada] : QChar(u' ');
  {
    const Oculta oculta(rejilla);
    if (letra == u'F') {
      OrdenarFechas(rejilla, ordenada, u"dd/mm/yyyy"_s);
    } else if (letra == u'I') {
      ordenarImportes(rejilla, ordenada);
    } else {
      rejilla.Sort(letra == u'#' ? 2 : 5);
    }
  }
  rejilla.PonerCol(nuevaColumna != -1 ? nuevaColumna : columnaAnterior);
  if (marcar) marcarTitulo(rejilla, ordenada);
}

}  // namespace comunes
