#include "anteriores/Apariciones.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "anteriores/Claves.h"
#include "anteriores/Vueltas.h"
#include "comunes/plataforma/Texto.h"
#include "devoluciones/Cotejo.h"
#include "devoluciones/Motivos.h"
#include "devoluciones/Textos.h"
#include "ficheros/ErrorEjecucion.h"
#include "remesa/ReglasCuentas.h"
#include "remesa/TotalesNorma.h"
#include "remesa/Validez.h"

namespace anteriores {
namespace {

using namespace Qt::StringLiterals;

/// Un texto sin sus acentos y en mayúsculas, para buscar en él.
QString Plegado(const QString& texto) {
  QString plegado;
  for (const QChar c : texto.normalized(QString::NormalizationForm_D))
    if (c.category() != QChar::Mark_NonSpacing) plegado += c.toUpper();
  return plegado;
}

/// Lo que se compara con un filtro, de un adeudo o de una devolución.
struct Comparado {
  std::string_view mandato, referencia, cuenta, nombre, acreedor;
};

class Buscador {
 public:
  explicit Buscador(const Filtro& filtro)
      : filtro_(filtro),
        cuenta_(remesa::CuentaComparable(filtro.cuenta)),
        nombre_(Plegado(comunes::DesdeWindows1252(filtro.nombre))) {}

  void leer(const FicheroHallado& fichero, const Seguir& seguir);
  std::vector<Aparicion> terminar(const Seguir& seguir);

 private:
  bool cumple(const Comparado& c) const;
  void adeudo(const FicheroHallado& fichero, const BloqueActual& bloque, std::string_view registro,
              std::uint64_t numero);
  void devoluciones(const FicheroHallado& fichero, const Seguir& seguir);

  /// Lo que una devolución trae de su adeudo, o de su fichero si es de todo él.
  struct ClaveVuelta {
    std::uint64_t acreedor, mandato, referencia;
    std::optional<std::uint64_t> importe;
    std::uint64_t entero = 0;
  };
  struct Pendiente {
    Aparicion aparicion;
    ClaveVuelta clave;
  };
  bool esDeHallado(const ClaveVuelta& v) const;
  /// De un bloque entero.
  struct BloqueVuelto {
    Aparicion aparicion;
    std::size_t enLote;
    std::uint64_t original;
  };
  void anadirBloques(const std::filesystem::path& ruta, std::vector<BloqueVuelto>& suyos,
                     const Seguir& seguir);

  const Filtro& filtro_;
  std::string_view cuenta_;
  QString nombre_;
  std::vector<Aparicion> halladas_;
  std::vector<Pendiente> pendientes_;  // devoluciones que no traen lo que se busca
  std::vector<ClavesAdeudo> claves_;   // de los adeudos hallados
  std::vector<ClavesAdeudo> porReferencia_;
  std::multimap<std::uint64_t, std::filesystem::path> ficheros_;  // en que los hay, por identificación
  std::map<std::filesystem::path, std::vector<BloqueVuelto>> bloques_;
};

bool Buscador::cumple(const Comparado& c) const {
  if (!filtro_.acreedor.empty() && remesa::SinSufijo(c.acreedor) != filtro_.acreedor) return false;
  const bool mandato = filtro_.mandato.empty() || MismoTexto(c.mandato, filtro_.mandato);
  const bool cuenta = cuenta_.empty() || remesa::CuentaComparable(c.cuenta) == cuenta_;
  if (filtro_.mandatoOCuenta) return (mandato && !filtro_.mandato.empty()) || (cuenta && !cuenta_.empty());
  if (!mandato || !cuenta) return false;
  if (!filtro_.referencia.empty() && !MismoTexto(c.referencia, filtro_.referencia)) return false;
  return nombre_.isEmpty() || Plegado(comunes::DesdeWindows1252(c.nombre)).contains(nombre_);
}

void Buscador::adeudo(const FicheroHallado& fichero, const BloqueActual& bloque, std::string_view registro,
                      std::uint64_t numero) {
  const std::string_view acreedor = Valor(bloque.cabecera, remesa::kIdentificadorAcreedor);
  if (!cumple({Valor(registro, remesa::kReferenciaMandato), Valor(registro, remesa::kReferenciaAdeudo),
               Valor(registro, remesa::kCuentaDeudor), Valor(registro, remesa::kNombreDeudor), acreedor}))
    return;
  const auto texto = [&](remesa::Posiciones donde) {
    return comunes::DesdeWindows1252(Valor(registro, donde));
  };
  Aparicion a{.ruta = fichero.ruta, .registro = numero, .clase = texto(remesa::kTipoAdeudo)};
  a.fecha = remesa::LeerFecha(remesa::LeerCampo(bloque.cabecera, remesa::kFechaCobro));
  a.importe = remesa::ImporteDe(registro);
  a.deudor = texto(remesa::kNombreDeudor);
  a.cuenta = texto(remesa::kCuentaDeudor);
  a.mandato = texto(remesa::kReferenciaMandato);
  a.referencia = texto(remesa::kReferenciaAdeudo);
  a.concepto = texto(remesa::kConcepto);
  a.acreedor = comunes::DesdeWindows1252(acreedor);
  halladas_.push_back(std::move(a));
  claves_.push_back(Claves(registro, bloque));
}

void Buscador::devoluciones(const FicheroHallado& fichero, const Seguir& seguir) {
  const devoluciones::Lote lote = LeerLote(fichero.ruta, seguir);
  const devoluciones::Forma forma = lote.ficheros().front().forma;
  const bool rechazos = EsDeRechazos(forma);
  for (std::size_t i = 0; i < lote.size(); ++i) {
    const devoluciones::Devolucion d = lote[i];
    const std::string mandato = d.mandato.enRegistro(), referencia = d.referencia.enRegistro(),
                      cuenta = d.cuenta.enRegistro(), nombre = d.deudor.enRegistro(),
                      acreedor = d.acreedor.enRegistro();
    Aparicion a{
        .ruta = fichero.ruta, .registro = d.registro, .clase = rechazos ? u"rechazado"_s : u"devuelto"_s};
    a.vuelta = true;
    a.enLinea = forma == devoluciones::Forma::Pain002 || forma == devoluciones::Forma::Camt054;
    a.fecha = d.fechaDevolucion ? d.fechaDevolucion : d.fechaCobro;
    a.importe = d.importe;
    a.deudor = d.deudor.texto();
    a.cuenta = d.cuenta.texto();
    a.mandato = d.mandato.texto();
    a.referencia = d.referencia.texto();
    a.concepto = d.concepto.texto();
    a.acreedor = d.acreedor.texto();
    a.motivo = d.motivo.texto();
    if (devoluciones::BuscarMotivo(d.motivo.bytes()) != nullptr)
      a.motivo += u' ' + devoluciones::TextoMotivo(d.motivo);
    const std::uint64_t original = HuellaIdentificacion(d.ficheroOriginal.enRegistro());
    if (d.alcance == devoluciones::Alcance::Bloque) {
      a.concepto = u"todo su bloque"_s;
      bloques_[fichero.ruta].push_back({std::move(a), i, original});
      continue;
    }
    if (d.alcance == devoluciones::Alcance::Mensaje) {
      a.concepto = u"todo el fichero"_s;
      pendientes_.push_back({std::move(a), {0, 0, 0, {}, original}});
      continue;
    }
    if (cumple({mandato, referencia, cuenta, nombre, acreedor})) {
      halladas_.push_back(std::move(a));
      continue;
    }
    std::optional<std::uint64_t> importe;
    if (d.importe && *d.importe >= 0) importe = static_cast<std::uint64_t>(*d.importe);
    pendientes_.push_back(
        {std::move(a),
         {HuellaAcreedor(acreedor), HuellaReferencia(mandato), HuellaReferencia(referencia), importe}});
  }
}

void Buscador::leer(const FicheroHallado& fichero, const Seguir& seguir) {
  const ClaseFichero clase = Reconocer(fichero);
  if (clase == ClaseFichero::Devoluciones) return devoluciones(fichero, seguir);
  const std::size_t antes = halladas_.size();
  BloqueActual bloque;
  std::uint64_t identificacion = 0;
  try {
    LeerRemesa(
        fichero.ruta, clase,
        [&](std::string_view registro, std::uint64_t numero) {
          bloque.dar(registro, numero);
          if (identificacion == 0 && remesa::Codigo(registro) == remesa::CodigoRegistro::Presentador)
            identificacion = HuellaIdentificacion(Valor(registro, remesa::kIdentificacionFichero));
          if (remesa::Clase(registro) == remesa::ClaseRegistro::Adeudo)
            adeudo(fichero, bloque, registro, numero);
        },
        seguir);
  } catch (...) {
    // De uno dañado no se toma nada.
    claves_.resize(claves_.size() - (halladas_.size() - antes));
    halladas_.resize(antes);
    throw;
  }
  if (halladas_.size() > antes && identificacion != 0) ficheros_.emplace(identificacion, fichero.ruta);
}

bool Buscador::esDeHallado(const ClaveVuelta& v) const {
  if (v.entero != 0) return ficheros_.contains(v.entero);
  if (v.mandato == 0 && v.referencia == 0) return false;
  const auto clave = [&](const ClavesAdeudo& c) {
    return std::tuple(v.mandato == 0 ? 0 : c.mandato, v.referencia == 0 ? 0 : c.referencia);
  };
  const std::vector<ClavesAdeudo>& ordenadas = v.mandato == 0 ? porReferencia_ : claves_;
  const std::tuple buscada(v.mandato, v.referencia);
  return std::any_of(std::ranges::lower_bound(ordenadas, buscada, {}, clave),
                     std::ranges::upper_bound(ordenadas, buscada, {}, clave), [&](const ClavesAdeudo& c) {
                       return (v.acreedor == 0 || v.acreedor == c.acreedor) &&
                              (!v.importe || *v.importe == c.importe);
                     });
}

/// Qué adeudos son los de un bloque lo sabe el cotejo, que vuelve a leer sus ficheros.
void Buscador::anadirBloques(const std::filesystem::path& ruta, std::vector<BloqueVuelto>& suyos,
                             const Seguir& seguir) try {
  const devoluciones::Lote lote = LeerLote(ruta, seguir);
  devoluciones::Cotejo cotejo(lote);
  std::set<std::uint64_t> originales;
  for (const BloqueVuelto& b : suyos)
    if (b.original != 0) originales.insert(b.original);
  std::vector<std::filesystem::path> leidos;
  for (const std::uint64_t original : originales)
    for (auto [f, hasta] = ficheros_.equal_range(original); f != hasta; ++f)
      if (cotejo.buscarEn(f->second)) leidos.push_back(f->second);
  std::set<std::pair<std::filesystem::path, std::uint64_t>> hallados;
  for (const Aparicion& a : halladas_)
    if (!a.vuelta) hallados.emplace(a.ruta, a.registro);
  for (BloqueVuelto& b : suyos) {
    if (b.enLote >= lote.size()) continue;
    const auto hallazgo = cotejo.hallazgo(b.enLote);
    const auto esHallado = [&](std::size_t adeudo) {
      const devoluciones::Presentado& p = cotejo.presentado(adeudo);
      return hallados.contains({leidos[p.remesa], p.registro});
    };
    if (hallazgo.estado == devoluciones::EstadoCotejo::Hallada &&
        std::ranges::any_of(hallazgo.adeudos, esHallado))
      halladas_.push_back(std::move(b.aparicion));
  }
} catch (const NoSeToma&) {
} catch (const devoluciones::FicheroAjeno&) {
} catch (const ficheros::ErrorEjecucion&) {
  // Ha cambiado o ya no está: como si no se hubiera leído.
}

std::vector<Aparicion> Buscador::terminar(const Seguir& seguir) {
  if (!pendientes_.empty()) {
    porReferencia_ = claves_;
    std::ranges::sort(porReferencia_, {}, &ClavesAdeudo::referencia);
    std::ranges::sort(claves_, {}, [](const auto& c) { return std::tuple(c.mandato, c.referencia); });
  }
  for (Pendiente& p : pendientes_)
    if (esDeHallado(p.clave)) halladas_.push_back(std::move(p.aparicion));
  for (auto& [ruta, suyos] : bloques_)
    if (!ficheros_.empty()) anadirBloques(ruta, suyos, seguir);
  std::ranges::stable_sort(halladas_, {}, [](const Aparicion& a) {
    return a.fecha ? std::chrono::sys_days(*a.fecha) : std::chrono::sys_days();
  });
  return std::move(halladas_);
}

}  // namespace

std::vector<Aparicion> BuscarApariciones(
    std::span<const FicheroHallado> ficheros, const Filtro& filtro,
    const std::function<bool(std::uintmax_t leidos, std::uintmax_t total)>& avance,
    std::vector<Omitido>* omitidos) {
  std::uintmax_t leidos = 0, total = 0;
  for (const FicheroHallado& fichero : ficheros)
    total += fichero.tamano;
  const auto seguir = [&] { return !avance || avance(leidos, total); };
  Buscador buscador(filtro);
  const auto omitir = [&](const FicheroHallado& fichero, const std::string& causa) {
    if (omitidos != nullptr) omitidos->push_back({fichero.ruta, causa});
  };
  for (const FicheroHallado& fichero : ficheros) {
    if (!seguir()) break;
    try {
      buscador.leer(fichero, seguir);
    } catch (const NoSeToma& porque) {
      omitir(fichero, porque.causa);
    } catch (const ficheros::ErrorEjecucion& error) {
      omitir(fichero, error.texto());
    } catch (const Detenido&) {
      break;
    }
    leidos += fichero.tamano;
  }
  try {
    return buscador.terminar(seguir);
  } catch (const Detenido&) {
    return {};
  }
}

QStringList ValoresAparicion(const Aparicion& a) {
  return {devoluciones::TextoDia(a.fecha),
          a.clase,
          devoluciones::TextoImporte(a.importe),
          a.motivo,
          a.concepto,
          a.deudor,
          a.referencia,
          a.mandato,
          a.cuenta,
          comunes::DesdeRuta(a.ruta),
          QString::number(a.registro),
          a.acreedor};
}

}  // namespace anteriores
