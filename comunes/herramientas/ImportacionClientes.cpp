#include "comunes/herramientas/ImportacionClientes.h"

#include <QSet>
#include <algorithm>

#include "comunes/herramientas/Csv.h"
#include "comunes/plataforma/LecturaTexto.h"

namespace herramientas {

using namespace Qt::StringLiterals;

namespace {

enum Columna { kColCodigo, kColNombre, kColTelefono, kColFax, kColCorreo, kColumnas };
using Posiciones = std::array<qsizetype, kColumnas>;

/// Dónde está cada columna en la línea de títulos; -1 si no está. "E-Mail" y "TELEFONO" también valen.
Posiciones BuscarColumnas(const QStringList& titulos) {
  static const std::array<QStringList, kColumnas> nombres{
      {{u"codigo"_s}, {u"nombre"_s}, {u"telefono"_s}, {u"fax"_s}, {u"email"_s, u"emailocodigo"_s}}};
  QStringList plegados;
  for (const QString& titulo : titulos) {
    QString plegado = Plegar(titulo);
    plegado.removeIf([](QChar c) { return !c.isLetterOrNumber(); });
    plegados += plegado;
  }
  Posiciones donde{};
  for (std::size_t i = 0; i < donde.size(); ++i) {
    donde[i] = -1;
    for (const QString& nombre : nombres[i])
      if (donde[i] < 0) donde[i] = plegados.indexOf(nombre);
  }
  return donde;
}

/// El fichero leído con el separador que más columnas reconoce y, si empatan, con ";".
struct Leido {
  Csv csv;
  Posiciones donde{};
  std::ptrdiff_t reconocidas = 0;
};
Leido Leer(const QString& texto) {
  Leido mejor;
  for (const QChar separador : {u';', u','}) {
    Leido leido;
    leido.csv = LeerCsv(texto, separador);
    leido.donde = BuscarColumnas(leido.csv.filas.empty() ? QStringList() : leido.csv.filas.front());
    leido.reconocidas = std::count_if(leido.donde.begin(), leido.donde.end(), [](auto d) { return d >= 0; });
    if (separador == u';' || leido.reconocidas > mejor.reconocidas) mejor = std::move(leido);
  }
  return mejor;
}

Contacto ContactoDe(const QStringList& fila, const Posiciones& donde) {
  const auto dato = [&](Columna columna) { return EnUnaLinea(fila.value(donde[columna])); };
  const QString correo = dato(kColCorreo);
  return {ClaveNueva(),
          {dato(kColNombre), dato(kColTelefono), dato(kColFax), correo.isEmpty() ? dato(kColCodigo) : correo},
          {}};
}

QSet<QString> Identidades(const Agenda& agenda) {
  QSet<QString> identidades;
  for (const Contacto& contacto : agenda.contactos)
    identidades.insert(IdentidadContacto(contacto));
  return identidades;
}

/// Falso si ya estaba.
bool Apuntar(QSet<QString>& identidades, const Contacto& contacto) {
  const auto antes = identidades.size();
  identidades.insert(IdentidadContacto(contacto));
  return identidades.size() > antes;
}

}  // namespace

int ImportacionClientes::cuantos(EstadoCliente estado) const {
  return static_cast<int>(std::count_if(clientes.begin(), clientes.end(),
                                        [&](const Cliente& cliente) { return cliente.estado == estado; }));
}

ImportacionClientes LeerClientes(const QByteArray& bytes, const Agenda& agenda) {
  ImportacionClientes importacion;
  const Leido leido = Leer(comunes::DecodificarTexto(bytes));
  if (leido.donde[kColNombre] < 0) {
    importacion.fallo =
        u"La primera línea del fichero ha de nombrar sus columnas: Código, Nombre, Teléfono, Fax y eMail, en "
        "cualquier orden. Al menos, Nombre."_s;
  } else if (leido.csv.comillasSinCerrar) {
    importacion.fallo =
        u"El fichero abre unas comillas que no se cierran: no se sabe dónde acaba cada dato."_s;
  }
  if (!importacion.fallo.isEmpty()) return importacion;
  QSet<QString> identidades = Identidades(agenda);
  const qsizetype columnas = leido.csv.filas.front().size();
  for (std::size_t f = 1; f < leido.csv.filas.size(); ++f) {
    const QStringList& fila = leido.csv.filas[f];
    Cliente cliente{ContactoDe(fila, leido.donde), EstadoCliente::Nuevo};
    if (std::any_of(fila.cbegin() + std::min(columnas, fila.size()), fila.cend(),
                    [](const QString& campo) { return !campo.trimmed().isEmpty(); })) {
      cliente.estado = EstadoCliente::Sobran;
    } else if (cliente.contacto.datos[kNombre].isEmpty()) {
      cliente.estado = EstadoCliente::SinNombre;
    } else if (!Apuntar(identidades, cliente.contacto)) {
      cliente.estado = EstadoCliente::Repetido;
    }
    importacion.clientes.push_back(std::move(cliente));
  }
  return importacion;
}

int AnadirClientes(Agenda& agenda, const ImportacionClientes& importacion) {
  QSet<QString> identidades = Identidades(agenda);
  int anadidos = 0;
  for (const Cliente& cliente : importacion.clientes) {
    if (cliente.estado != EstadoCliente::Nuevo || !Apuntar(identidades, cliente.contacto)) continue;
    agenda.contactos.push_back(cliente.contacto);
    ++anadidos;
  }
  return anadidos;
}

}  // namespace herramientas
