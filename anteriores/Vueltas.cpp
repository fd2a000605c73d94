#include "anteriores/Vueltas.h"

#include <algorithm>
#include <tuple>
#include <unordered_map>

#include "devoluciones/Cotejo.h"
#include "devoluciones/Motivos.h"
#include "ficheros/ErrorEjecucion.h"

namespace anteriores {
namespace {

/// Con más adeudos iguales no se puede decidir, y buscarlos no tendría fin.
constexpr std::size_t kMaxCandidatosVuelta = 4096;
/// Un cobro que cae en fiesta lo hace el banco unos días después, y esa fecha es la que da.
constexpr int kDiasAplazado = 7;

/// Busca de qué adeudos es cada vuelta.
class Asociacion {
 public:
  Asociacion(std::span<Entrada> entradas, std::span<const Vuelta> vueltas,
             std::span<const FicheroAnterior> ficheros)
      : entradas_(entradas), vueltas_(vueltas), ficheros_(ficheros) {}

  void hacer() {
    for (std::size_t i = 0; i < vueltas_.size(); ++i) {
      const Vuelta& v = vueltas_[i];
      const auto cual = static_cast<std::uint32_t>(i + 1);
      if (v.entera)
        anotarEntera(v, cual);
      else if (v.deBloque)
        bloques_[v.fichero].push_back(cual);
      else if (v.mandato != 0)
        decidir(v, cual, porMandato(v));
      else if (v.referencia != 0)
        porReferencia_.emplace(v.referencia, cual);
    }
    for (const auto& [fichero, suyas] : bloques_)
      anotarBloques(fichero, suyas);
    recorrer();
  }

 private:
  using Candidatos = std::vector<Entrada*>;

  void marcar(Entrada& entrada, std::uint32_t cual) {
    const auto fecha = [&](std::uint32_t vuelta) { return vueltas_[vuelta - 1].devuelto; };
    if (entrada.vuelta == 0 || fecha(cual) > fecha(entrada.vuelta)) entrada.vuelta = cual;
  }

  /// Lo que coincide en todo lo que la vuelta trae.
  static bool cuadra(const Vuelta& v, const Entrada& e) {
    return (v.acreedor == 0 || e.acreedor == v.acreedor) && (v.mandato == 0 || e.mandato == v.mandato) &&
           (v.referencia == 0 || e.referencia == v.referencia) && (!v.importe || e.importe == *v.importe);
  }

  Candidatos porMandato(const Vuelta& v) const {
    const auto clave = [&](const Entrada& e) {
      return std::tuple(e.mandato, v.acreedor == 0 ? 0 : e.acreedor,
                        v.acreedor == 0 || !v.importe ? 0 : std::uint64_t{e.importe});
    };
    const std::tuple buscada(v.mandato, v.acreedor, v.acreedor == 0 ? 0 : v.importe.value_or(0));
    Candidatos candidatos;
    const auto fin = std::ranges::upper_bound(entradas_, buscada, {}, clave);
    for (auto i = std::ranges::lower_bound(entradas_, buscada, {}, clave); i != fin; ++i) {
      Entrada& e = *i;
      if (!cuadra(v, e)) continue;
      if (candidatos.size() == kMaxCandidatosVuelta) return {};
      candidatos.push_back(&e);
    }
    return candidatos;
  }

  void decidir(const Vuelta& v, std::uint32_t cual, Candidatos candidatos) {
    const auto preferir = [&](const auto& cumple) {
      if (!std::ranges::any_of(candidatos, cumple)) return false;
      std::erase_if(candidatos, [&](const Entrada* e) { return !cumple(e); });
      return true;
    };
    if (v.original != 0)
      preferir([&](const Entrada* e) { return ficheros_[e->fichero].resumen.identificacion == v.original; });
    const auto aplazado = [&](const Entrada* e) {
      return e->dia < v.cobro && e->dia + kDiasAplazado >= v.cobro;
    };
    if (v.cobro != 0 && !preferir([&](const Entrada* e) { return e->dia == v.cobro; }) && !preferir(aplazado))
      return;
    if (v.devuelto != 0) std::erase_if(candidatos, [&](const Entrada* e) { return e->dia > v.devuelto; });
    const auto deOtroDia = [&](const Entrada* e) { return e->dia != candidatos.front()->dia; };
    if (candidatos.empty() || std::ranges::any_of(candidatos, deOtroDia)) return;
    for (Entrada* e : candidatos)
      marcar(*e, cual);
  }

  void anotarEntera(const Vuelta& v, std::uint32_t cual) {
    if (v.original == 0) return;
    for (std::size_t f = 0; f < ficheros_.size(); ++f)
      if (ficheros_[f].resumen.identificacion == v.original)
        enteros_.emplace(static_cast<std::uint32_t>(f), cual);
  }

  /// Qué adeudos son los de un bloque lo sabe el cotejo, que vuelve a leer sus ficheros.
  void anotarBloques(std::uint32_t fichero, const std::vector<std::uint32_t>& suyas) try {
    const devoluciones::Lote lote = LeerLote(ficheros_[fichero].hallado.ruta, [] { return true; });
    devoluciones::Cotejo cotejo(lote);
    std::vector<std::uint32_t> leidos;
    for (std::size_t f = 0; f < ficheros_.size(); ++f) {
      const auto esSuyo = [&](std::uint32_t cual) {
        const std::uint64_t original = vueltas_[cual - 1].original;
        return original != 0 && original == ficheros_[f].resumen.identificacion;
      };
      if (std::ranges::any_of(suyas, esSuyo) && cotejo.buscarEn(ficheros_[f].hallado.ruta))
        leidos.push_back(static_cast<std::uint32_t>(f));
    }
    for (const std::uint32_t cual : suyas) {
      if (vueltas_[cual - 1].enLote >= lote.size()) continue;
      const auto hallazgo = cotejo.hallazgo(vueltas_[cual - 1].enLote);
      if (hallazgo.estado != devoluciones::EstadoCotejo::Hallada) continue;
      for (const std::size_t adeudo : hallazgo.adeudos) {
        const devoluciones::Presentado& p = cotejo.presentado(adeudo);
        deBloque_.emplace(Sitio(leidos[p.remesa], p.registro), cual);
      }
    }
  } catch (const NoSeToma&) {
  } catch (const devoluciones::FicheroAjeno&) {
  } catch (const ficheros::ErrorEjecucion&) {
    // Ha cambiado o ya no está: como si no se hubiera leído.
  }

  /// Lo que no se encuentra por el mandato: una pasada para todo.
  void recorrer() {
    if (porReferencia_.empty() && enteros_.empty() && deBloque_.empty()) return;
    std::unordered_map<std::uint32_t, Candidatos> candidatos;
    for (Entrada& e : entradas_) {
      if (const auto entero = enteros_.find(e.fichero); entero != enteros_.end()) marcar(e, entero->second);
      if (const auto suyo = deBloque_.find(Sitio(e.fichero, e.registro)); suyo != deBloque_.end())
        marcar(e, suyo->second);
      const auto [desde, hasta] = porReferencia_.equal_range(e.referencia);
      for (auto i = desde; e.referencia != 0 && i != hasta; ++i)
        if (Candidatos& suyos = candidatos[i->second];
            cuadra(vueltas_[i->second - 1], e) && suyos.size() < kMaxCandidatosVuelta)
          suyos.push_back(&e);
    }
    for (auto& [cual, suyos] : candidatos)
      decidir(vueltas_[cual - 1], cual, std::move(suyos));
  }

  static std::uint64_t Sitio(std::uint32_t fichero, std::uint64_t registro) {
    return std::uint64_t{fichero} << 32 | registro;
  }

  std::span<Entrada> entradas_;
  std::span<const Vuelta> vueltas_;
  std::span<const FicheroAnterior> ficheros_;
  std::unordered_multimap<std::uint64_t, std::uint32_t> porReferencia_;
  std::unordered_map<std::uint32_t, std::uint32_t> enteros_;
  std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> bloques_;
  std::unordered_map<std::uint64_t, std::uint32_t> deBloque_;
};

}  // namespace

devoluciones::Lote LeerLote(const std::filesystem::path& ruta, const Seguir& seguir) try {
  devoluciones::Lote lote;
  const devoluciones::FicheroLeido& fichero = lote.leer(ruta, [&](std::uintmax_t, std::uintmax_t) {
    if (!seguir()) throw Detenido();
  });
  const auto cortado = [](const devoluciones::AvisoLectura& aviso) {
    return aviso.clase == devoluciones::ClaseAviso::Cortado;
  };
  if (!fichero.completo || std::ranges::any_of(fichero.avisos, cortado))
    throw NoSeToma{"está dañado: acaba antes de tiempo"};
  return lote;
} catch (const devoluciones::FicheroAjeno& ajeno) {
  throw NoSeToma{ajeno.porque.toStdString()};
}

bool EsDeRechazos(devoluciones::Forma forma) {
  return forma == devoluciones::Forma::Rechazos || forma == devoluciones::Forma::Pain002;
}

std::vector<Vuelta> LeerVueltas(const std::filesystem::path& ruta, std::uint32_t fichero,
                                const Seguir& seguir) {
  const devoluciones::Lote lote = LeerLote(ruta, seguir);
  const bool rechazos = EsDeRechazos(lote.ficheros().front().forma);
  std::vector<Vuelta> vueltas;
  vueltas.reserve(lote.size());
  for (std::size_t i = 0; i < lote.size(); ++i) {
    const devoluciones::Devolucion d = lote[i];
    Vuelta v;
    v.fichero = fichero;
    v.registro = d.registro;
    v.entera = d.alcance == devoluciones::Alcance::Mensaje;
    v.deBloque = d.alcance == devoluciones::Alcance::Bloque;
    v.rechazo = rechazos;
    v.devuelto = remesa::NumeroDeDia(d.fechaDevolucion);
    v.cobro = remesa::NumeroDeDia(d.fechaCobro);
    v.acreedor = HuellaAcreedor(d.acreedor.enRegistro());
    v.mandato = HuellaReferencia(d.mandato.enRegistro());
    v.referencia = HuellaReferencia(d.referencia.enRegistro());
    if (d.importe && *d.importe >= 0) v.importe = static_cast<std::uint64_t>(*d.importe);
    v.enLote = static_cast<std::uint32_t>(i);
    v.original = HuellaIdentificacion(d.ficheroOriginal.enRegistro());
    v.motivo = d.motivo.texto().toStdString();
    vueltas.push_back(std::move(v));
  }
  return vueltas;
}

void Asociar(std::span<Entrada> entradas, std::span<const Vuelta> vueltas,
             std::span<const FicheroAnterior> ficheros) {
  for (Entrada& entrada : entradas)
    entrada.vuelta = 0;
  if (!vueltas.empty()) Asociacion(entradas, vueltas, ficheros).hacer();
}

std::string TextoVuelta(const Vuelta& vuelta) {
  std::string texto = vuelta.rechazo ? "rechazado" : "devuelto";
  if (vuelta.devuelto != 0)
    texto += " el " + remesa::FechaQ19(remesa::EscribirFecha(DiaDeNumero(vuelta.devuelto)));
  if (vuelta.motivo.empty()) return texto + ", sin motivo";
  texto += ", motivo " + vuelta.motivo;
  if (const devoluciones::Motivo* motivo = devoluciones::BuscarMotivo(vuelta.motivo))
    texto.append(" («").append(motivo->texto).append("»)");
  return texto;
}

}  // namespace anteriores
