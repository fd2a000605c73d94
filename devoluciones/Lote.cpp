#include "devoluciones/Lote.h"

#include <algorithm>

#include "devoluciones/Lectores.h"
#include "ficheros/ErrorEjecucion.h"
#include "ficheros/Lectura.h"
#include "iso20022/LectorXml.h"
#include "remesa/Campos.h"

namespace devoluciones {
namespace {

using namespace Qt::StringLiterals;

remesa::TipoFichero TipoDelFichero(const std::filesystem::path& ruta) {
  std::array<char, 7> cabeza{};
  ficheros::LecturaFichero lectura(ruta);
  return remesa::TipoDe({cabeza.data(), lectura.leer(cabeza)});
}

std::uint64_t Numero(const std::optional<remesa::Dia>& dia) {
  return dia ? static_cast<std::uint64_t>(std::chrono::sys_days(*dia).time_since_epoch().count()) : ~0ULL;
}

std::uint64_t Huella(const Devolucion& d) {
  auto huella = static_cast<std::uint64_t>(d.importe.value_or(-1));
  for (const Dato* dato :
       {&d.referencia, &d.mandato, &d.cuenta, &d.deudor, &d.motivo, &d.ficheroOriginal, &d.bloqueOriginal})
    huella = remesa::Mezclar(huella, remesa::Huella(dato->bytes()));
  return remesa::Mezclar(remesa::Mezclar(huella, Numero(d.fechaCobro)), Numero(d.fechaDevolucion));
}

}  // namespace

FicheroAjeno AjenoDe(remesa::TipoFichero tipo, const QString& esperado) {
  if (tipo == remesa::TipoFichero::Ajeno) return {u"no es "_s + esperado};
  const std::string_view nombre = remesa::NombreTipo(tipo);
  return {u"es %1, no %2"_s.arg(QString::fromUtf8(nombre.data(), static_cast<qsizetype>(nombre.size())),
                                esperado)};
}

bool EsDeDevoluciones(const std::filesystem::path& ruta) {
  return iso20022::EmpiezaComoXml(ruta) ? EsMensajeDeDevoluciones(ruta)
                                        : remesa::EsDeDevoluciones(TipoDelFichero(ruta));
}

const FicheroLeido& Lote::leer(const std::filesystem::path& ruta, const remesa::AvanceLectura& avance) {
  ficheros_.push_back({.ruta = ruta, .primera = size()});
  quitarCabecera();
  try {
    leerEnSuForma(ruta, avance);
  } catch (...) {
    entradas_.resize(fichero().primera);
    ficheros_.pop_back();
    throw;
  }
  fichero().cuantas = size() - fichero().primera;
  mirarRepetidos();
  if (fichero().cuantas == 0 && fichero().avisos.empty()) avisar({.clase = ClaseAviso::SinDevoluciones});
  return fichero();
}

void Lote::leerEnSuForma(const std::filesystem::path& ruta, const remesa::AvanceLectura& avance) {
  if (iso20022::EmpiezaComoXml(ruta)) return LeerXml(*this, ruta, avance);
  const remesa::TipoFichero tipo = TipoDelFichero(ruta);
  if (!remesa::EsDeDevoluciones(tipo)) throw AjenoDe(tipo, u"un fichero de devoluciones"_s);
  LeerPlano(*this, ruta, avance);
}

std::uint64_t Lote::huella(const Entrada& entrada) const {
  if (entrada.registro.empty()) return Huella(leidas_[entrada.donde]);
  constexpr remesa::Posiciones kHastaImporte{remesa::kReferenciaAdeudo.desde, remesa::kImporteAdeudo.hasta};
  constexpr remesa::Posiciones kDesdeMotivo{remesa::kMotivo.desde, remesa::kFechaCobroOriginal.hasta};
  std::uint64_t huella = 0;
  for (const remesa::Posiciones donde : {kHastaImporte, remesa::kCuentaDeudor, kDesdeMotivo})
    huella = remesa::Mezclar(huella, remesa::Huella(remesa::LeerCampo(entrada.registro, donde)));
  return entrada.donde == kSinCabecera ? huella : remesa::Mezclar(huella, cabeceras_[entrada.donde].huella);
}

void Lote::mirarRepetidos() {
  std::vector<std::uint64_t> huellas;
  huellas.reserve(fichero().cuantas);
  std::uint64_t todas = remesa::Huella(fichero().identificacion.bytes());
  for (std::size_t i = fichero().primera; i < size(); ++i) {
    huellas.push_back(huella(entradas_[i]));
    todas = remesa::Mezclar(todas, huellas.back());
  }
  const auto igual = std::ranges::find(huellas_, todas);
  if (igual != huellas_.end() && fichero().cuantas > 0) {
    const auto cual = static_cast<std::size_t>(igual - huellas_.begin());
    entradas_.resize(fichero().primera);
    fichero().cuantas = 0;
    fichero().avisos.clear();
    const std::u8string otro = ficheros_[cual].ruta.filename().u8string();
    avisar({.clase = ClaseAviso::FicheroRepetido, .causa = std::string(otro.begin(), otro.end())});
  }
  huellas_.push_back(todas);
  for (std::size_t i = fichero().primera; i < size(); ++i) {
    const auto anterior = vistas_.poner(huellas[i - fichero().primera], i + 1);
    iguales_.push_back(anterior == 0 ? i : anterior - 1);
    if (anterior != 0) contar(ClaseAviso::DevolucionRepetida, entradas_[i].numero);
  }
}

Devolucion Lote::operator[](std::size_t i) const {
  const Entrada& entrada = entradas_[i];
  Devolucion d;
  if (entrada.registro.empty())
    d = leidas_[entrada.donde];
  else
    d = DesdeRegistro(entrada.registro, entrada.donde == kSinCabecera ? nullptr : &cabeceras_[entrada.donde]);
  d.fichero = entrada.fichero;
  d.registro = entrada.numero;
  return d;
}

void Lote::anadir(const Devolucion& devolucion, std::uint64_t linea) {
  entradas_.push_back({{},
                       linea,
                       static_cast<std::uint32_t>(ficheros_.size() - 1),
                       static_cast<std::uint32_t>(leidas_.size())});
  leidas_.push_back(devolucion);
}

void Lote::anadirRegistro(std::string_view bytes, std::uint64_t numero) {
  entradas_.push_back({bytes, numero, static_cast<std::uint32_t>(ficheros_.size() - 1), cabecera_});
}

void Lote::ponerCabecera(Cabecera cabecera) {
  cabecera.huella = Numero(cabecera.fecha);
  for (const Dato* dato : {&cabecera.acreedor, &cabecera.ficheroOriginal})
    cabecera.huella = remesa::Mezclar(cabecera.huella, remesa::Huella(dato->bytes()));
  cabecera_ = static_cast<std::uint32_t>(cabeceras_.size());
  cabeceras_.push_back(cabecera);
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
