#include "ventanas/principal/Antecedentes.h"

#include <algorithm>
#include <chrono>
#include <thread>

#include "comunes/plataforma/Formatos.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "ventanas/principal/ModeloRegistros.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

using namespace std::chrono_literals;

constexpr auto kCadaMirada = 100ms;
/// Varias órdenes seguidas no empiezan una comparación cada una.
constexpr auto kQuieta = 300ms;
constexpr qint64 kSinContestar = 5000;  // milisegundos
constexpr unsigned kMaxHilos = 2;

/// Las de la clave propia o, si no está, la carpeta en que se guarda.
std::vector<std::filesystem::path> CarpetasDeAjustes() {
  const QString seccion = u"Comunes"_s, propia = u"AnterioresQ19"_s;
  const bool esta = comunes::EstaEnINI(comunes::RutaAjustes, seccion, propia);
  const QString lista = comunes::ReadINI(comunes::RutaAjustes, seccion, esta ? propia : u"DestinoQ19"_s, {});
  std::vector<std::filesystem::path> carpetas;
  // La carpeta en que se guarda es una, lleve lo que lleve su nombre.
  for (const QString& carpeta : esta ? lista.split(u';') : QStringList{lista})
    if (!carpeta.trimmed().isEmpty()) carpetas.push_back(comunes::ARuta(carpeta.trimmed()));
  return carpetas;
}

/// Si se han leído los mismos ficheros, y ninguno ha cambiado.
bool LosMismos(const anteriores::Indice* uno, const anteriores::Indice& otro) {
  return uno != nullptr &&
         std::ranges::equal(uno->ficheros(), otro.ficheros(), [](const auto& a, const auto& b) {
           return a.hallado.ruta == b.hallado.ruta && a.hallado.tamano == b.hallado.tamano &&
                  a.hallado.escrito == b.hallado.escrito;
         });
}

}  // namespace

Antecedentes::Antecedentes(const ModeloRegistros& modelo, QObject* padre) : QObject(padre), modelo_(modelo) {
  espera_.setSingleShot(true);
  connect(&espera_, &QTimer::timeout, this, &Antecedentes::comparar);
  connect(&mirada_, &QTimer::timeout, this, &Antecedentes::mirar);
  connect(&modelo, &QAbstractItemModel::modelReset, this, &Antecedentes::anticuar);
  connect(&modelo, &QAbstractItemModel::dataChanged, this, &Antecedentes::anticuar);
}

Antecedentes::~Antecedentes() {
  lector_.dejarDelTodo();
  comparador_.dejarDelTodo();
}

void Antecedentes::iniciar() {
  carpetas_ = CarpetasDeAjustes();
  if (!carpetas_.empty()) empezarLectura();
}

void Antecedentes::refrescar() {
  if (!carpetas_.empty() && (estado_ != Estado::Leyendo || noContesta())) empezarLectura();
}

void Antecedentes::detener() {
  if (estado_ != Estado::Leyendo) return;
  lector_.dejar();
  lectura_.reset();
  estado_ = Estado::Detenido;
  emit avanza();
}

void Antecedentes::empezarLectura() {
  lectura_ = std::make_shared<Lectura>();
  antes_ = 0;
  quieta_.start();
  anteriores::PeticionIndice peticion;
  peticion.carpetas = carpetas_;
  peticion.desde = anteriores::MesesAntes(comunes::Hoy(), anteriores::kMeses);
  peticion.hilos = std::clamp(std::thread::hardware_concurrency(), 1U, kMaxHilos);
  const bool hay =
      lector_.empezar([lectura = lectura_, peticion, anterior = indice_](const HiloSuelto::Seguir& seguir) {
        auto hecho =
            anteriores::Indice::Hacer(peticion, anterior, [&](std::uintmax_t leidos, std::uintmax_t total) {
              ++lectura->pasos;
              lectura->leidos = leidos;
              lectura->total = total;
              return seguir();
            });
        const std::lock_guard puesto(lectura->cerrojo);
        lectura->hecho = std::move(hecho);
      });
  estado_ = hay ? Estado::Leyendo : Estado::Detenido;
  mirada_.start(kCadaMirada);
  emit avanza();
}

int Antecedentes::porCiento() const {
  if (!lectura_ || lectura_->total == 0) return 0;
  return static_cast<int>(std::min<std::uintmax_t>(100, lectura_->leidos * 100 / lectura_->total));
}

bool Antecedentes::noContesta() const {
  return estado_ == Estado::Leyendo && quieta_.isValid() && quieta_.elapsed() > kSinContestar;
}

void Antecedentes::mirar() {
  if (comparando_ && !comparador_.enMarcha()) {
    comparada_ = comparando_->value_or(Comparada());
    comparando_.reset();
    emit comparado();
  }
  if (estado_ == Estado::Leyendo && lectura_) {
    if (lectura_->pasos != antes_) quieta_.restart();
    antes_ = lectura_->pasos;
    if (!lector_.enMarcha()) {
      const std::lock_guard puesto(lectura_->cerrojo);
      const bool otro = lectura_->hecho && !LosMismos(indice_.get(), *lectura_->hecho);
      estado_ = lectura_->hecho && lectura_->hecho->completo() ? Estado::Leido : Estado::Detenido;
      if (lectura_->hecho) indice_ = lectura_->hecho;
      if (otro) {
        emit leido();
        anticuar();
      }
    }
    emit avanza();
  }
  if (estado_ != Estado::Leyendo && !comparando_) mirada_.stop();
}

void Antecedentes::anticuar() {
  comparador_.dejar();
  comparando_.reset();
  if (comparada_.errores + comparada_.avisos > 0 || !comparada_.guardada.isEmpty()) {
    comparada_ = {};
    emit comparado();
  }
  if (indice_ && !modelo_.lista().empty())
    espera_.start(kQuieta);
  else
    espera_.stop();
}

void Antecedentes::comparar() {
  auto resultado = std::make_shared<std::optional<Comparada>>();
  comparador_.empezar(
      [resultado, indice = indice_, lista = modelo_.lista()](const HiloSuelto::Seguir& seguir) {
        const auto cruce = anteriores::CruzarLista(
            *indice, lista, {}, [](remesa::Hallazgo&&) {}, seguir);
        Comparada comparada{cruce.errores, cruce.avisos};
        if (const auto ruta = anteriores::GuardadaAntes(*indice, lista, seguir))
          comparada.guardada = comunes::DesdeRuta(*ruta);
        if (cruce.completo) *resultado = std::move(comparada);
      });
  comparando_ = std::move(resultado);
  mirada_.start(kCadaMirada);
}

void Antecedentes::anadir(remesa::ResultadoComprobacion& resultado, const Cruzar& cruzar,
                          const remesa::ReceptorHallazgos& recibir,
                          const remesa::AvanceComprobacion& avance) {
  nota_.clear();
  if (!indice_ && estado_ == Estado::Leyendo) nota_ = u"Lo enviado antes se está leyendo todavía."_s;
  if (!indice_ && estado_ == Estado::Detenido) nota_ = u"Lo enviado antes no se ha leído: no se compara."_s;
  if (indice_ && !indice_->carpetasSinLeer().empty() && indice_->ficheros().empty())
    nota_ = u"Las carpetas de lo enviado antes no se pueden leer: no se compara."_s;
  if (!indice_ || indice_->ficheros().empty() || !resultado.completa) return;
  struct Recogido {
    std::vector<remesa::Hallazgo> hallazgos;
    anteriores::ResultadoCruce cruce;
    std::atomic<std::uint64_t> pasos = 0;
    bool hecho = false;
  };
  auto recogido = std::make_shared<Recogido>();
  HiloSuelto hilo;
  hilo.empezar([recogido, indice = indice_, cruzar](const HiloSuelto::Seguir& seguir) {
    recogido->cruce = cruzar(
        *indice, [&](remesa::Hallazgo&& h) { recogido->hallazgos.push_back(std::move(h)); },
        [&] {
          ++recogido->pasos;
          return seguir();
        });
    recogido->hecho = true;
  });
  QElapsedTimer parado;
  parado.start();
  for (std::uint64_t pasos = 0; hilo.enMarcha();) {
    std::this_thread::sleep_for(10ms);
    if (pasos != recogido->pasos) parado.restart();
    pasos = recogido->pasos;
    if (parado.elapsed() > kSinContestar) {
      nota_ = u"Lo enviado antes no contesta: no se ha comparado."_s;
      return;
    }
    if (avance && !avance(1, 2)) {
      resultado.completa = false;
      return;
    }
  }
  if (!recogido->hecho) {
    nota_ = u"No se ha podido comparar con lo enviado antes."_s;
    return;
  }
  for (remesa::Hallazgo& hallazgo : recogido->hallazgos)
    recibir(std::move(hallazgo));
  resultado.errores += recogido->cruce.errores;
  resultado.avisos += recogido->cruce.avisos;
  const auto remesas = static_cast<std::uint64_t>(std::ranges::count_if(
      indice_->ficheros(), [](const auto& f) { return f.clase != anteriores::ClaseFichero::Devoluciones; }));
  nota_ = u"Comparada con %1 de antes."_s.arg(TextoCuenta(remesas, u"remesa"_s, u"remesas"_s));
  if (!indice_->carpetasSinLeer().empty() || !indice_->completo())
    nota_ += u" No se han podido leer todas."_s;
  if (recogido->cruce.elMismo)
    nota_ += u" Este fichero ya está guardado en %1: no se compara consigo mismo."_s.arg(
        comunes::ConMarcasEscritas(comunes::DesdeRuta(*recogido->cruce.elMismo)));
}

}  // namespace principal
