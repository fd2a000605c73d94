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

void Anotador::campo(CodigoHallazgo codigo, const Campo& campo, std::string esperado, std::uint64_t otro) {
  Hallazgo hallazgo{codigo};
  hallazgo.donde = campo.donde;
  hallazgo.campo = &campo;
  hallazgo.valor = Recortar(LeerCampo(bytes_, campo.donde));
  hallazgo.esperado = std::move(esperado);
  hallazgo.otro = otro;
  anotar(std::move(hallazgo));
}

void Anotador::posiciones(CodigoHallazgo codigo, Posiciones donde, std::string valor, std::string esperado) {
  Hallazgo hallazgo{codigo};
  hallazgo.donde = donde;
  hallazgo.valor = std::move(valor);
  hallazgo.esperado = std::move(esperado);
  anotar(std::move(hallazgo));
}

void Anotador::parte(CodigoHallazgo codigo, const Campo& campo, Posiciones donde) {
  Hallazgo hallazgo{codigo};
  hallazgo.donde = donde;
  hallazgo.campo = &campo;
  hallazgo.valor = LeerCampo(bytes_, donde);
  anotar(std::move(hallazgo));
}

void Anotador::fichero(CodigoHallazgo codigo, std::string valor, std::string esperado, std::uint64_t otro) {
  Hallazgo hallazgo{codigo};
  hallazgo.valor = std::move(valor);
  hallazgo.esperado = std::move(esperado);
  hallazgo.otro = otro;
  EsError(codigo) ? ++errores_ : ++avisos_;
  recibir_(std::move(hallazgo));
}

void Anotador::anotar(Hallazgo hallazgo) {
  hallazgo.registro = numero_;
  hallazgo.fila = fila_;
  hallazgo.clase = clase_;
  if (Codigo(bytes_) == CodigoRegistro::Adeudo) {
    hallazgo.referencia = Recortar(LeerCampo(bytes_, kReferenciaAdeudo));
    // Un opcional no lleva el nombre: es el del adeudo que lo precede.
    hallazgo.deudor =
        clase_ == ClaseRegistro::Adeudo ? std::string(Recortar(LeerCampo(bytes_, kNombreDeudor))) : deudor_;
  }
  EsError(hallazgo.codigo) ? ++errores_ : ++avisos_;
  recibir_(std::move(hallazgo));
}

}  // namespace remesa
