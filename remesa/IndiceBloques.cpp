#include "remesa/IndiceBloques.h"

#include <algorithm>

#include "remesa/Calendario.h"
#include "remesa/Repetidos.h"

namespace remesa {
namespace {

constexpr Posiciones kDireccionAcreedor{kNombreAcreedor.hasta + 1, kCuentaAcreedor.desde - 1};

std::string_view SinBlancosFinales(std::string_view texto) {
  return texto.substr(0, texto.find_last_not_of(' ') + 1);
}

std::string_view Dato(std::string_view registro, Posiciones donde) {
  return SinBlancosFinales(LeerCampo(registro, donde));
}

bool EsCorrecta(std::string_view cabecera) {
  return cabecera.size() == kLongitudRegistro && LeerFecha(LeerCampo(cabecera, kFechaCobro)) &&
         !Dato(cabecera, kIdentificadorAcreedor).empty();
}

// De lo que no se guardará basta una huella: dos cabeceras que la compartan quedan escritas igual.
std::string ClaveDe(std::string_view cabecera, bool correcta) {
  constexpr char kSeparador = '\0';
  std::string clave;
  if (correcta) {
    for (const Posiciones donde : {kIdentificadorAcreedor, kFechaCobro, kCuentaAcreedor})
      clave.append(Dato(cabecera, donde)).push_back(kSeparador);
    return clave;
  }
  clave.append("=").append(cabecera.substr(0, kLongitudRegistro));
  if (cabecera.size() > kLongitudRegistro)
    clave +=
        std::to_string(cabecera.size()) + '=' + std::to_string(Huella(cabecera.substr(kLongitudRegistro)));
  return clave;
}

}  // namespace

std::string AcreedorDe(std::string_view cabecera) {
  return std::string(Dato(cabecera, kIdentificadorAcreedor));
}

void IndiceBloques::empezarFichero() {
  avisos_ = {};
  nuevas_.clear();
  registro_ = 0;
  enCurso_ = kNinguno;
}

IndiceBloques::Numero IndiceBloques::dar(std::string_view registro) {
  ++registro_;
  switch (Codigo(registro)) {
    case CodigoRegistro::Presentador:
      presentar(registro);
      return kNinguno;
    case CodigoRegistro::Acreedor:
      return enCurso_ = abrir(registro);
    case CodigoRegistro::Adeudo:
      if (enCurso_ != kNinguno)
        ++bloques_[enCurso_].registros03;
      else if (avisos_.sinDueno == 0)
        avisos_.sinDueno = registro_;
      return enCurso_;
    default:
      return kNinguno;
  }
}

void IndiceBloques::terminarFichero() {
  for (const auto& [clave, acreedor] : nuevas_) {
    const auto entrada = claves_.find(*clave);
    if (bloques_[entrada->second].registros03 > 0) {
      ++avisos_.nuevos;
      continue;
    }
    const auto suyo = acreedores_.find(*acreedor);
    if (--suyo->second.bloques == 0) acreedores_.erase(suyo);
    claves_.erase(entrada);
  }
  nuevas_.clear();
}

std::vector<std::string> IndiceBloques::identificadores() const {
  std::vector<std::string> lista(siguienteAcreedor_);
  for (const auto& [identificador, acreedor] : acreedores_)
    lista[acreedor.numero] = identificador;
  return lista;
}

IndiceBloques::Numero IndiceBloques::abrir(std::string_view cabecera) {
  const bool correcta = EsCorrecta(cabecera);
  if (!correcta) apuntar(avisos_.incorrectas);
  const auto [entrada, nueva] =
      claves_.try_emplace(ClaveDe(cabecera, correcta), static_cast<Numero>(bloques_.size()));
  if (!nueva) {
    comparar(bloques_[entrada->second], cabecera);
    return entrada->second;
  }
  const auto [acreedor, primero] =
      acreedores_.try_emplace(AcreedorDe(cabecera), Acreedor{siguienteAcreedor_, 0});
  if (primero) ++siguienteAcreedor_;
  ++acreedor->second.bloques;
  nuevas_.emplace_back(&entrada->first, &acreedor->first);
  Bloque& bloque = bloques_.emplace_back();
  bloque.acreedor = acreedor->second.numero;
  bloque.fecha.fill(' ');
  std::ranges::copy(LeerCampo(cabecera, kFechaCobro), bloque.fecha.begin());
  bloque.nombre = Huella(Dato(cabecera, kNombreAcreedor));
  bloque.direccion = Huella(Dato(cabecera, kDireccionAcreedor));
  return entrada->second;
}

void IndiceBloques::comparar(const Bloque& bloque, std::string_view cabecera) {
  const bool otroNombre = bloque.nombre != Huella(Dato(cabecera, kNombreAcreedor));
  if (!otroNombre && bloque.direccion == Huella(Dato(cabecera, kDireccionAcreedor))) return;
  apuntar(avisos_.distintas);
  if (avisos_.distintas.cuenta > 1) return;
  avisos_.acreedor = AcreedorDe(cabecera);
  avisos_.fecha = Dato(cabecera, kFechaCobro);
  avisos_.otroNombre = otroNombre;
  if (otroNombre) avisos_.nombre = Recortar(LeerCampo(cabecera, kNombreAcreedor));
}

void IndiceBloques::presentar(std::string_view registro) {
  constexpr Posiciones kQuien{kIdentificadorPresentador.desde, kNombrePresentador.hasta};
  const auto nombrar = [](std::string_view quien, bool porIdentificador = false) {
    constexpr std::size_t kLargo = kIdentificadorPresentador.longitud();
    const std::string_view nombre = Recortar(quien.substr(std::min(kLargo, quien.size())));
    return std::string(nombre.empty() || porIdentificador ? Recortar(quien.substr(0, kLargo)) : nombre);
  };
  const std::string_view quien = Dato(registro, kQuien);
  if (!hayPresentador_) {
    hayPresentador_ = true;
    presentador_ = quien;
  } else if (quien != presentador_) {
    apuntar(avisos_.presentadores);
    if (avisos_.presentadores.cuenta > 1) return;
    const bool mismoNombre = nombrar(presentador_) == nombrar(quien);
    avisos_.presentador = nombrar(presentador_, mismoNombre);
    avisos_.otroPresentador = nombrar(quien, mismoNombre);
  }
}

void IndiceBloques::apuntar(Apariciones& que) const {
  if (que.cuenta++ == 0) que.primero = registro_;
}

}  // namespace remesa
