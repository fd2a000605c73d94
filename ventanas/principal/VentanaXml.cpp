#include "ventanas/principal/VentanaXml.h"

#include <QEvent>
#include <QFileInfo>
#include <QHeaderView>
#include <QShortcut>
#include <algorithm>

#include "comunes/dialogos/MyBox.h"
#include "comunes/impresion/Progreso.h"
#include "comunes/plataforma/Explorar.h"
#include "comunes/plataforma/IniFiles.h"
#include "comunes/plataforma/Texto.h"
#include "comunes/plataforma/Ventanas.h"
#include "comunes/rejilla/MiVisor.h"
#include "comunes/rejilla/ModeloRejilla.h"
#include "comunes/rejilla/Orden.h"
#include "iso20022/Entidades.h"
#include "iso20022/Textos.h"
#include "ui_VentanaXml.h"
#include "ventanas/principal/TextosObservacion.h"

namespace principal {

using namespace Qt::StringLiterals;

namespace {

/// De cada nivel: más no los lee nadie, y una remesa enorme puede tener millones.
constexpr std::size_t kMaximoNotas = 5000;

constexpr const char* kColumnasNotas =
    "<Nivel#7;<Código#7;>Registro#9>;<Posiciones#11;<Campo#28;<Dice#26;<Se escribe, o se esperaba#26;"
    "<Deudor#24;<Referencia#18;<Qué pasa y qué hacer#60";
constexpr const char* kTiposNotas = "TT#TTTTTTT";

QString Utf8(std::string_view utf8) {
  return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QString PosicionesDe(const iso20022::Nota& nota) {
  if (nota.donde.desde == 0) return {};
  return nota.donde.desde == nota.donde.hasta ? QString::number(nota.donde.desde)
                                              : u"%1-%2"_s.arg(nota.donde.desde).arg(nota.donde.hasta);
}

QString EnEuros(std::uint64_t centimos) {
  return TextoEuros(static_cast<std::int64_t>(centimos));
}

/// Con la extensión .xml, si no la lleva.
QString ConExtension(const QString& nombre) {
  return nombre.endsWith(u".xml", Qt::CaseInsensitive) ? nombre : nombre + u".xml"_s;
}

}  // namespace

VentanaXml::VentanaXml(const remesa::ListaRegistros& lista, Ir ir, AlEscribir alEscribir, QWidget* padre)
    : QDialog(padre),
      ui_(std::make_unique<Ui::VentanaXml>()),
      lista_(lista),
      ir_(std::move(ir)),
      alEscribir_(std::move(alEscribir)),
      bicDe_(iso20022::BicsDe(comunes::RutaAjustes)),
      rejilla_(u"Visor"_s) {
  ui_->setupUi(this);
  preparar();
  comunes::FuentesVentana(*this);
  QFont grande = ui_->Resumen->font();
  grande.setPointSizeF(grande.pointSizeF() * 1.25);
  grande.setBold(true);
  ui_->Resumen->setFont(grande);
  comunes::DisponerVentana(*this);
  conectar();
}

VentanaXml::~VentanaXml() {
  ui_->Visor->setModel(nullptr);
}

void VentanaXml::preparar() {
  comunes::PrepararRejilla(rejilla_, QString::fromUtf8(kColumnasNotas));
  rejilla_.PonerTag(QLatin1String(kTiposNotas));
  rejilla_.PonerRows(rejilla_.FixedRows());
  modelo_ = std::make_unique<comunes::ModeloRejilla>(rejilla_);
  QTableView& visor = *ui_->Visor;
  visor.setModel(modelo_.get());
  visor.verticalHeader()->hide();
  visor.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  visor.verticalHeader()->setDefaultSectionSize(visor.fontMetrics().height() + 6);
  visor.horizontalHeader()->setHighlightSections(false);
  visor.horizontalHeader()->setSectionsClickable(true);
  for (int columna = 0; columna < rejilla_.Cols(); ++columna)
    visor.setColumnWidth(columna, modelo_->AnchoColumna(columna));
  ui_->Cada->setEnabled(false);
  ui_->cmdExportar->setDefault(true);
}

void VentanaXml::conectar() {
  for (const QComboBox* lista : {ui_->Version, ui_->Direcciones})
    connect(lista, &QComboBox::currentIndexChanged, this, &VentanaXml::examinar);
  connect(ui_->Repartir, &QCheckBox::toggled, ui_->Cada, &QSpinBox::setEnabled);
  for (const QCheckBox* casilla : {ui_->Omitir, ui_->Repartir, ui_->Detallar})
    connect(casilla, &QCheckBox::toggled, this, &VentanaXml::examinar);
  connect(ui_->Cada, &QSpinBox::valueChanged, this, &VentanaXml::examinar);
  // No cambia nada de lo que se enseña, pero se escribe con las opciones con que se examinó.
  connect(ui_->Compacto, &QCheckBox::toggled, this, &VentanaXml::examinar);
  connect(ui_->Visor->selectionModel(), &QItemSelectionModel::currentRowChanged, this, &VentanaXml::detallar);
  connect(ui_->Visor, &QTableView::doubleClicked, this, &VentanaXml::ir);
  for (const int tecla : {Qt::Key_Return, Qt::Key_Enter})
    connect(new QShortcut(tecla, ui_->Visor, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, &VentanaXml::ir);
  connect(ui_->Visor->horizontalHeader(), &QHeaderView::sectionClicked, this, &VentanaXml::ordenar);
  connect(ui_->cmdIr, &QPushButton::clicked, this, &VentanaXml::ir);
  connect(ui_->cmdExportar, &QPushButton::clicked, this, &VentanaXml::exportar);
  connect(ui_->cmdCerrar, &QPushButton::clicked, this, &QDialog::reject);
}

iso20022::OpcionesExportacion VentanaXml::opciones() const {
  using D = iso20022::Direcciones;
  constexpr D kDirecciones[] = {D::Necesarias, D::Todas, D::Ninguna};
  iso20022::OpcionesExportacion opciones;
  opciones.version = ui_->Version->currentIndex() == 1 ? iso20022::Version::V02 : iso20022::Version::V08;
  opciones.direcciones = kDirecciones[std::clamp(ui_->Direcciones->currentIndex(), 0, 2)];
  opciones.omitir = ui_->Omitir->isChecked();
  opciones.compacto = ui_->Compacto->isChecked();
  opciones.detalle = ui_->Detallar->isChecked();
  opciones.cada = ui_->Repartir->isChecked() ? static_cast<std::uint64_t>(ui_->Cada->value()) : 0;
  opciones.bicDe = bicDe_;
  return opciones;
}

void VentanaXml::examinar() {
  exportacion_.reset();
  notas_.clear();
  std::size_t errores = 0, avisos = 0;
  const auto recoger = [&](iso20022::Nota&& nota) {
    std::size_t& cuantas = iso20022::EsError(nota.codigo) ? errores : avisos;
    if (cuantas == kMaximoNotas) return;
    ++cuantas;
    notas_.push_back(std::move(nota));
  };
  std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
  fuentes.push_back(std::make_unique<iso20022::FuenteLista>(lista_));
  auto exportacion = std::make_unique<iso20022::Exportacion>(std::move(fuentes), opciones());
  {
    const comunes::Reloj reloj;
    comunes::Avance avance(u"Examinando la remesa…"_s);
    caducada_ = false;
    const auto resumen = exportacion->examinar(recoger, [&](std::uintmax_t hecho, std::uintmax_t total) {
      return avance.avanzar(static_cast<double>(hecho), static_cast<double>(total));
    });
    resumen_ = resumen.value_or(iso20022::ResumenExportacion());
    if (resumen) exportacion_ = std::move(exportacion);
  }
  // Los errores, delante; en cada nivel, primero lo de toda la remesa y luego por registros.
  std::ranges::stable_sort(notas_, {}, [](const iso20022::Nota& nota) {
    return std::pair(!iso20022::EsError(nota.codigo), nota.registro);
  });
  llenar();
  contar();
  detallar();
}

void VentanaXml::llenar() {
  const comunes::SinRedibujo quieta(rejilla_);
  for (int columna = 0; columna < rejilla_.Cols(); ++columna)
    rejilla_.PonerEstilo(0, columna, {});
  rejilla_.PonerRows(rejilla_.FixedRows());
  rejilla_.PonerRows(rejilla_.FixedRows() + static_cast<int>(notas_.size()));
  int fila = rejilla_.FixedRows();
  for (const iso20022::Nota& nota : notas_) {
    const QString celdas[] = {iso20022::TextoNivel(nota.codigo),
                              Utf8(iso20022::TextoCodigo(nota.codigo)),
                              nota.registro == 0 ? QString() : QString::number(nota.registro),
                              PosicionesDe(nota),
                              nota.campo == nullptr ? QString() : Utf8(nota.campo->nombre),
                              iso20022::TextoValor(nota),
                              iso20022::TextoCambio(nota),
                              comunes::DesdeWindows1252(nota.deudor),
                              comunes::DesdeWindows1252(nota.referencia),
                              iso20022::TextoNota(nota)};
    int columna = 0;
    for (const QString& celda : celdas)
      rejilla_.PonerTextMatrix(fila, columna++, celda);
    rejilla_.PonerRowItem(fila, fila - rejilla_.FixedRows());
    if (iso20022::EsError(nota.codigo)) rejilla_.PonerEstilo(fila, 0, {.Negrita = true});
    ++fila;
  }
}

void VentanaXml::contar() {
  if (!exportacion_) {
    ui_->Resumen->setText(u"El examen se detuvo"_s);
    return ui_->Estado->setText(u"Exportar lo hace otra vez, entero, antes de escribir nada."_s);
  }
  ui_->Resumen->setText(u"%1 · %2 · %3 · %4"_s.arg(
      TextoCuenta(resumen_.mensajes, u"mensaje"_s, u"mensajes"_s),
      TextoCuenta(resumen_.bloques, u"bloque"_s, u"bloques"_s),
      TextoCuenta(resumen_.adeudos, u"adeudo"_s, u"adeudos"_s), EnEuros(resumen_.importe)));
  const QString avisos = TextoCuenta(resumen_.avisos, u"aviso"_s, u"avisos"_s);
  const QString errores = TextoCuenta(resumen_.errores, u"error"_s, u"errores"_s);
  const QString fuera =
      TextoCuenta(resumen_.omitidos, u"adeudo"_s, u"adeudos"_s) + u", "_s + EnEuros(resumen_.importeOmitido);
  const bool conAvisos = resumen_.avisos > 0;
  QString estado;
  if (!resumen_.posible)
    estado = u"No se puede escribir: %1%2."_s.arg(errores, conAvisos ? u" y "_s + avisos : QString()) +
             (resumen_.salvable
                  ? u" Corríjalos, o deje fuera los adeudos que los tienen: %1."_s.arg(fuera)
                  : u" Corríjalos: alguno es de toda la remesa, y no se salva dejando adeudos fuera."_s);
  else if (resumen_.omitidos > 0)
    estado = u"Se puede escribir dejando fuera %1, con %2.%3"_s.arg(
        fuera, errores, conAvisos ? u" Además, %1."_s.arg(avisos) : QString());
  else
    estado = conAvisos ? u"Se puede escribir, con %1."_s.arg(avisos) : u"Se puede escribir, sin avisos."_s;
  if (resumen_.errores + resumen_.avisos > notas_.size())
    estado += u" Se muestran los primeros %1 de cada nivel."_s.arg(kMaximoNotas);
  ui_->Estado->setText(estado);
}

void VentanaXml::ordenar(int columna) {
  const comunes::SinRedibujo quieta(rejilla_);
  for (int otra = 0; otra < rejilla_.Cols(); ++otra)
    rejilla_.PonerEstilo(0, otra, {});
  comunes::OrdenarColumna(rejilla_, columna, true);
}

const iso20022::Nota* VentanaXml::actual() const {
  const QModelIndex indice = ui_->Visor->currentIndex();
  if (!indice.isValid()) return nullptr;
  const int cual = modelo_->index(indice.row(), 0).data(comunes::ModeloRejilla::kElemento).toInt();
  return cual >= 0 && cual < std::ssize(notas_) ? &notas_[static_cast<std::size_t>(cual)] : nullptr;
}

void VentanaXml::detallar() {
  const iso20022::Nota* nota = actual();
  ui_->cmdIr->setEnabled(nota != nullptr && nota->fila > 0);
  ui_->Detalle->setText(nota == nullptr ? QString() : iso20022::TextoNota(*nota));
}

void VentanaXml::caducar() {
  caducada_ = true;
}

bool VentanaXml::event(QEvent* evento) {
  const bool atendido = QDialog::event(evento);
  // Al volver de corregir algo. Fuera del suceso: examinar puede enseñar su avance.
  if (evento->type() == QEvent::WindowActivate && caducada_)
    QMetaObject::invokeMethod(
        this, [this] { alDia(); }, Qt::QueuedConnection);
  return atendido;
}

/// Examina otra vez si hace falta; false si no se acabó.
bool VentanaXml::alDia() {
  if (!caducada_ && exportacion_) return true;
  const int fila = ui_->Visor->currentIndex().row();
  examinar();
  const int filas = modelo_->rowCount();
  if (fila >= 0 && filas > 0) ui_->Visor->setCurrentIndex(modelo_->index(std::min(fila, filas - 1), 0));
  return exportacion_ != nullptr;
}

void VentanaXml::ir() {
  if (caducada_) {
    alDia();
    return ui_->Detalle->setText(u"La remesa había cambiado y se ha examinado otra vez."_s);
  }
  const iso20022::Nota* nota = actual();
  if (nota == nullptr || nota->fila == 0) return;
  ir_(nota->fila, nota->donde.desde);
  if (caducada_) alDia();
}

QString VentanaXml::destino() {
  const auto rutas = [this](const QString& elegido) {
    return exportacion_->rutas(comunes::ARuta(ConExtension(elegido)));
  };
  const auto existen = [&](const QString& elegido) {
    QStringList hay;
    for (const std::filesystem::path& ruta : rutas(elegido))
      if (const QString nombre = comunes::DesdeRuta(ruta); QFileInfo::exists(nombre)) hay << nombre;
    return hay;
  };
  // Si son varios, se pregunta por el primero que ya esté, que dice los demás.
  QStringList hay;
  const auto nombreFinal = [&](const QString& elegido) {
    hay = existen(elegido);
    return hay.isEmpty() ? comunes::DesdeRuta(rutas(elegido).front()) : hay.front();
  };
  const auto loDemas = [&](const QString&) {
    return hay.size() < 2 ? QString()
                          : u"Con él se sustituirían %1 más, hasta %2."_s.arg(
                                QString::number(hay.size() - 1), QFileInfo(hay.back()).fileName());
  };
  const QString carpeta = comunes::ReadINI(comunes::RutaAjustes, u"Comunes"_s, u"DestinoQ19"_s, QString());
  const QString elegido =
      comunes::DialogoFichero(false, this, carpeta, u"xml"_s, false, u"remesa.xml"_s, nombreFinal, loDemas);
  return elegido.isEmpty() ? elegido : ConExtension(elegido);
}

void VentanaXml::exportar() {
  if (!alDia()) return;
  if (!resumen_.posible) {
    comunes::Avisar(ui_->Estado->text(), this);
    return (resumen_.salvable ? static_cast<QWidget*>(ui_->Omitir) : ui_->Visor)->setFocus();
  }
  const QString fichero = destino();
  if (fichero.isEmpty()) return;
  std::vector<std::filesystem::path> escritos;
  {
    const comunes::Reloj reloj;
    comunes::Avance avance(u"Escribiendo %1…"_s.arg(QFileInfo(fichero).fileName()));
    escritos =
        exportacion_->escribir(comunes::ARuta(fichero), [&](std::uintmax_t hecho, std::uintmax_t total) {
          return avance.avanzar(static_cast<double>(hecho), static_cast<double>(total));
        });
  }
  if (escritos.empty()) return ui_->Estado->setText(u"Exportación detenida: no se ha escrito nada."_s);
  QString que =
      u"Exportado a XML: %1, %2 en %3"_s.arg(TextoCuenta(resumen_.adeudos, u"adeudo"_s, u"adeudos"_s),
                                             EnEuros(resumen_.importe), comunes::DesdeRuta(escritos.front()));
  if (escritos.size() > 1)
    que += u" y %1"_s.arg(TextoCuenta(escritos.size() - 1, u"fichero más"_s, u"ficheros más"_s));
  if (resumen_.omitidos > 0)
    que += u". Fuera, por tener errores, %1, %2"_s.arg(
        TextoCuenta(resumen_.omitidos, u"adeudo"_s, u"adeudos"_s), EnEuros(resumen_.importeOmitido));
  if (const auto sobra = exportacion_->sobrante(comunes::ARuta(fichero)); !sobra.empty())
    que += u". %1 es de otra vez, y no de estos"_s.arg(QFileInfo(comunes::DesdeRuta(sobra)).fileName());
  alEscribir_(que + u'.');
  accept();
}

}  // namespace principal
