#include "remesa/Anotador.h"

namespace remesa {

void Anotador::pasarA(std::string_view bytes, std::uint64_t fila) {
  bytes_ = bytes;
  clase_ = Clase(bytes);
  ++numero_;
  fila_ = fila;
}

void Anotador::ponerAdeudo(std::string_view bytes) {
  deudor_ = Recortar(LeerCampo(bytes, kNombreDeudor));
}

Hallazgo Anotador::preparar(CodigoHallazgo codigo, const Campo& campo, std::string esperado,
                            std::uint64_t otro) const {
  Hallazgo hallazgo{codigo};
  hallazgo.donde = campo.donde;
  hallazgo.campo = &campo;
  hallazgo.valor = Recortar(LeerCampo(bytes_, campo.donde));
  hallazgo.esperado = std::move(esperado);
  hallazgo.otro = otro;
  situar(hallazgo);
  return hallazgo;
}

void Anotador::dar(Hallazgo&& hallazgo) {
  EsError(hallazgo.codigo) ? ++errores_ : ++avisos_;
  recibir_(std::move(hallazgo));
}

void Anotador::campo(CodigoHallazgo codigo, const Campo& campo, std::string esperado, std::uint64_t otro) {
  dar(preparar(codigo, campo, std::move(esperado), otro));
}

void Anotador::posiciones(CodigoHallazgo codigo, Posiciones donde, std::string valor, std::string esperado) {
  Hallazgo hallazgo{codigo};
  hallazgo.donde = donde;
  hallazgo.valor = std::move(valor);
  hallazgo.esperado = std::move(esperado);
  situar(hallazgo);
  dar(std::move(hallazgo));
}

void Anotador::parte(CodigoHallazgo codigo, const Campo& campo, Posiciones donde, std::string valor) {
  Hallazgo hallazgo{codigo};
  hallazgo.donde = donde;
  hallazgo.campo = &campo;
  hallazgo.valor = std::move(valor);
  situar(hallazgo);
  dar(std::move(hallazgo));
}

void Anotador::fichero(CodigoHallazgo codigo, std::string valor, std::string esperado, std::uint64_t otro) {
  Hallazgo hallazgo{codigo};
  hallazgo.valor = std::move(valor);
  hallazgo.esperado = std::move(esperado);
  hallazgo.otro = otro;
  dar(std::move(hallazgo));
}

void Anotador::situar(Hallazgo& hallazgo) const {
  hallazgo.registro = numero_;
  hallazgo.fila = fila_;
  hallazgo.clase = clase_;
  if (Codigo(bytes_) != CodigoRegistro::Adeudo) return;
  hallazgo.referencia = Recortar(LeerCampo(bytes_, kReferenciaAdeudo));
  // Un opcional no lleva el nombre: es el del adeudo que lo precede.
  hallazgo.deudor =
      clase_ == ClaseRegistro::Adeudo ? std::string(Recortar(LeerCampo(bytes_, kNombreDeudor))) : deudor_;
}

}  // namespace remesa
