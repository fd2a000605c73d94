#include "iso20022/Exportacion.h"
#include "iso20022/Valores.h"

#include <algorithm>

#include "ficheros/ErrorEjecucion.h"
#include "ficheros/EscrituraConjunta.h"
#include "iso20022/EscritorXml.h"
#include "remesa/Registro.h"

namespace iso20022 {
namespace {

using C = remesa::ClaseRegistro;
using remesa::LeerCampo;
using remesa::Recortar;

constexpr std::size_t kTrozoXml = std::size_t{512} << 10;  // sin pasar por la reserva de la escritura

/// La identificación con "-n" detrás, cortada para que quepa en las 35 de un elemento.
std::string ConNumero(std::string_view identificacion, std::uint64_t numero) {
  constexpr std::size_t kMaximo = 35;
  const std::string cola = "-" + std::to_string(numero);
  return std::string(identificacion.substr(0, kMaximo - cola.size())) + cola;
}

/// "remesa.xml" y 2: "remesa-2.xml".
std::filesystem::path Numerada(const std::filesystem::path& destino, std::uint64_t numero) {
  std::filesystem::path nombre = destino.stem();
  nombre += "-" + std::to_string(numero);
  nombre += destino.extension();
  return destino.parent_path() / nombre;
}

}  // namespace

Exportacion::Exportacion(std::vector<std::unique_ptr<Fuente>> fuentes, OpcionesExportacion opciones)
    : fuentes_(std::move(fuentes)), opciones_(std::move(opciones)) {}

Exportacion::~Exportacion() = default;

/// Lo que hace falta para escribir los mensajes, de uno en uno.
class Exportacion::Redaccion {
 public:
  Redaccion(Exportacion& exportacion, const Avance& avance)
      : e_(exportacion),
        avance_(avance),
        traduccion_(exportacion.opciones_, {}),
        xml_(exportacion.opciones_.version, exportacion.opciones_.compacto) {}

  /// `numero`, desde 1; 0 si no hay otro. false si `avance` lo detuvo.
  bool mensaje(const Mensaje& mensaje, std::size_t numero, ficheros::EscrituraSegura& fichero) {
    traduccion_.presentador(e_.presentador_);
    std::string identificacion(traduccion_.valor(Grado::Mensaje, Forma::IdMensaje));
    if (numero > 0) identificacion = ConNumero(identificacion, numero);
    traduccion_.poner(Grado::Mensaje, Forma::IdMensaje, identificacion);
    traduccion_.poner(Grado::Mensaje, Forma::Cuantos, std::to_string(mensaje.adeudos));
    traduccion_.poner(Grado::Mensaje, Forma::Suma, EscribirImporte(mensaje.importe));
    xml_.abrirMensaje();
    xml_.escribir(Grado::Mensaje, traduccion_.valores(Grado::Mensaje));
    std::uint64_t bloque = 0;
    for (const Tramo& tramo : mensaje.tramos) {
      abrirBloque(tramo, ConNumero(identificacion, ++bloque));
      if (!adeudos(tramo, fichero)) return false;
      xml_.cerrarBloque();
    }
    xml_.cerrarMensaje();
    vaciar(fichero);
    return true;
  }

 private:
  void abrirBloque(const Tramo& tramo, const std::string& identificacion) {
    const Bloque& bloque = e_.bloques_[tramo.grupo->bloque];
    traduccion_.cabecera(bloque.cabecera);
    const auto poner = [this](Forma forma, std::string_view valor) {
      traduccion_.poner(Grado::Bloque, forma, valor);
    };
    poner(Forma::IdBloque, identificacion);
    poner(Forma::Cuantos, std::to_string(tramo.adeudos));
    poner(Forma::Suma, EscribirImporte(tramo.importe));
    poner(Forma::Instrumento, bloque.entreEmpresas ? kEntreEmpresas : kEsquemaBasico);
    poner(Forma::TipoAdeudo, tramo.grupo->tipo);
    poner(Forma::Codigo, tramo.grupo->categoria);
    xml_.abrirBloque();
    xml_.escribir(Grado::Bloque, traduccion_.valores(Grado::Bloque));
  }

  bool adeudos(const Tramo& tramo, ficheros::EscrituraSegura& fichero) {
    std::uint32_t apunte = tramo.primero;
    for (std::uint64_t i = 0; i < tramo.adeudos; ++i, apunte = e_.apuntes_[apunte].siguiente) {
      e_.leer(apunte, adeudo_);
      traduccion_.adeudo(adeudo_);
      xml_.escribir(Grado::Adeudo, traduccion_.valores(Grado::Adeudo));
      ++hechos_;
      if (xml_.bytes().size() < kTrozoXml) continue;
      vaciar(fichero);
      if (avance_ && !avance_(hechos_, e_.resumen_.adeudos)) return false;
    }
    return true;
  }

  void vaciar(ficheros::EscrituraSegura& fichero) {
    fichero.escribir(xml_.bytes());
    xml_.vaciar();
  }

  Exportacion& e_;
  const Avance& avance_;
  Traduccion traduccion_;
  EscritorXml xml_;
  AdeudoLeido adeudo_;
  std::uint64_t hechos_ = 0;
};

std::vector<std::filesystem::path> Exportacion::escribir(const std::filesystem::path& destino,
                                                         const Avance& avance) {
  if (!resumen_.posible) throw ficheros::ErrorEjecucion(ficheros::kArgumentoNoValido);
  const auto mensajes = repartir();
  auto destinos = rutas(destino);
  ficheros::EscrituraConjunta escritura;
  Redaccion redaccion(*this, avance);
  for (std::size_t i = 0; i < mensajes.size(); ++i) {
    ficheros::EscrituraSegura& fichero = escritura.anadir(destinos[i]);
    if (!redaccion.mensaje(mensajes[i], mensajes.size() > 1 ? i + 1 : 0, fichero)) return {};
    fichero.volcar();
  }
  escritura.confirmar();
  return destinos;
}

std::vector<std::filesystem::path> Exportacion::rutas(const std::filesystem::path& destino) const {
  if (resumen_.mensajes <= 1) return {destino};
  std::vector<std::filesystem::path> rutas;
  for (std::uint64_t i = 1; i <= resumen_.mensajes; ++i)
    rutas.push_back(Numerada(destino, i));
  return rutas;
}

std::filesystem::path Exportacion::sobrante(const std::filesystem::path& destino) const {
  if (opciones_.cada == 0) return {};
  const auto siguiente = Numerada(destino, resumen_.mensajes <= 1 ? 1 : resumen_.mensajes + 1);
  std::error_code error;
  return std::filesystem::exists(siguiente, error) ? siguiente : std::filesystem::path();
}

// Los adeudos van en el orden de los grupos, también de un mensaje a otro: cada uno tiene así los menos
// bloques que puede.
std::vector<Exportacion::Mensaje> Exportacion::repartir() {
  std::vector<Mensaje> mensajes(1);
  const std::uint64_t caben = opciones_.cada == 0 ? resumen_.adeudos : opciones_.cada;
  for (const Grupo& grupo : grupos_) {
    std::uint32_t apunte = grupo.primero;
    for (std::uint64_t quedan = grupo.adeudos; quedan > 0;) {
      if (mensajes.back().adeudos == caben) mensajes.emplace_back();
      Mensaje& mensaje = mensajes.back();
      Tramo tramo{&grupo, apunte, std::min(quedan, caben - mensaje.adeudos)};
      if (tramo.adeudos == grupo.adeudos)
        tramo.importe = grupo.importe;
      else
        for (std::uint64_t i = 0; i < tramo.adeudos; ++i, apunte = apuntes_[apunte].siguiente)
          tramo.importe += importeDe(apunte);
      quedan -= tramo.adeudos;
      mensaje.adeudos += tramo.adeudos;
      mensaje.importe += tramo.importe;
      mensaje.tramos.push_back(tramo);
    }
  }
  return mensajes;
}

std::uint64_t Exportacion::importeDe(std::uint32_t apunte) {
  std::uint64_t importe = 0;
  const std::uint64_t sitio = apuntes_[apunte].sitio;
  fuentes_[sitio >> kBitsSitio]->leer(sitio & ((std::uint64_t{1} << kBitsSitio) - 1), 1,
                                      [&](std::string_view bytes) { importe = ImporteDe(bytes); });
  return importe;
}

void Exportacion::leer(std::uint32_t apunte, AdeudoLeido& adeudo) {
  adeudo.vaciar();
  const Apunte& a = apuntes_[apunte];
  fuentes_[a.sitio >> kBitsSitio]->leer(a.sitio & ((std::uint64_t{1} << kBitsSitio) - 1), a.lineas,
                                        [&](std::string_view bytes) {
                                          const C clase = remesa::Clase(bytes);
                                          if (clase < C::Adeudo || clase > C::Mandato) return;
                                          RegistroLeido& registro = adeudo.de(clase);
                                          registro.bytes = bytes.substr(0, remesa::kLongitudRegistro);
                                          registro.numero = 1;
                                        });
}

}  // namespace iso20022
