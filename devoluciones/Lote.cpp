#include "devoluciones/Lote.h"

#include <algorithm>

#include "devoluciones/Lectores.h"
#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Lectura.h"
#include "iso20022/LectorXml.h"

namespace devoluciones {
namespace {

remesa::TipoFichero TipoDelFichero(const std::filesystem::path& ruta) {
  std::array<char, 7> cabeza{};
  ficheros::LecturaFichero lectura(ruta);
  return remesa::TipoDe({cabeza.data(), lectura.leer(cabeza)});
}

std::uint64_t Huella(const Devolucion& d) {
  const auto numero = [](const std::optional<remesa::Dia>& dia) {
    return dia ? static_cast<std::uint64_t>(std::chrono::sys_days(*dia).time_since_epoch().count()) : ~0ULL;
  };
  std::uint64_t huella = static_cast<std::uint64_t>(d.importe.value_or(-1));
  for (const Dato* dato :
       {&d.referencia, &d.mandato, &d.cuenta, &d.deudor, &d.motivo, &d.ficheroOriginal, &d.bloqueOriginal})
    huella = remesa::Mezclar(huella, remesa::Huella(dato->bytes()));
  return remesa::Mezclar(remesa::Mezclar(huella, numero(d.fechaCobro)), numero(d.fechaDevolucion));
}

}  // namespace

const FicheroLeido& Lote::leer(const std::filesystem::path& ruta, const remesa::AvanceLectura& avance) {
  ficheros_.push_back({.ruta = ruta, .primera = devoluciones_.size()});
  try {
    leerEnSuForma(ruta, avance);
  } catch (...) {
    descartarUltimo();
    throw;
  }
  fichero().cuantas = devoluciones_.size() - fichero().primera;
  mirarRepetidos();
  if (fichero().cuantas == 0 && fichero().avisos.empty()) avisar({ClaseAviso::SinDevoluciones});
  return fichero();
}

void Lote::leerEnSuForma(const std::filesystem::path& ruta, const remesa::AvanceLectura& avance) {
  if (iso20022::EmpiezaComoXml(ruta)) return LeerXml(*this, ruta, avance);
  const remesa::TipoFichero tipo = TipoDelFichero(ruta);
  if (!remesa::EsDeDevoluciones(tipo)) throw FicheroAjeno{std::string(remesa::NombreTipo(tipo))};
  LeerPlano(*this, ruta, avance);
}

void Lote::descartarUltimo() {
  devoluciones_.resize(fichero().primera);
  ficheros_.pop_back();
}

void Lote::mirarRepetidos() {
  std::vector<std::uint64_t> huellas;
  std::uint64_t todas = remesa::Huella(fichero().identificacion.bytes());
  for (std::size_t i = fichero().primera; i < devoluciones_.size(); ++i) {
    huellas.push_back(Huella(devoluciones_[i]));
    todas = remesa::Mezclar(todas, huellas.back());
  }
  const auto igual = std::ranges::find(huellas_, todas);
  if (igual != huellas_.end() && fichero().cuantas > 0) {
    const auto cual = static_cast<std::size_t>(igual - huellas_.begin());
    devoluciones_.resize(fichero().primera);
    fichero().cuantas = 0;
    fichero().avisos.clear();
    const std::u8string otro = ficheros_[cual].ruta.filename().u8string();
    avisar({.clase = ClaseAviso::FicheroRepetido, .causa = std::string(otro.begin(), otro.end())});
  }
  huellas_.push_back(todas);
  for (std::size_t i = fichero().primera; i < devoluciones_.size(); ++i) {
    const auto anterior = vistas_.poner(huellas[i - fichero().primera], i + 1);
    iguales_.push_back(anterior == 0 ? i : anterior - 1);
    if (anterior != 0) contar(ClaseAviso::DevolucionRepetida, devoluciones_[i].registro);
  }
}

Devolucion& Lote::anadir(std::uint64_t registro) {
  Devolucion& nueva = devoluciones_.emplace_back();
  nueva.fichero = static_cast<std::uint32_t>(ficheros_.size() - 1);
  nueva.registro = registro;
  return nueva;
}

void Lote::avisar(AvisoLectura aviso) {
  fichero().avisos.push_back(std::move(aviso));
}

void Lote::contar(ClaseAviso clase, std::uint64_t registro) {
  const auto hay = std::ranges::find(fichero().avisos, clase, &AvisoLectura::clase);
  if (hay == fichero().avisos.end())
    avisar({.clase = clase, .registro = registro});
  else
    ++hay->cuenta;
}

Dato Lote::guardar(QStringView texto) {
  return {textos_.emplace_back(texto.trimmed().toUtf8().toStdString()), true};
}

}  // namespace devoluciones
