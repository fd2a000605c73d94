#include "comunes/herramientas/Agenda.h"

#include <QCryptographicHash>
#include <QHash>
#include <QSet>
#include <QUuid>
#include <algorithm>

#include "comunes/herramientas/Csv.h"
#include "comunes/plataforma/LecturaTexto.h"

namespace herramientas {

using namespace Qt::StringLiterals;

const std::array<QString, kDatosContacto> kTitulosContacto{u"Nombre"_s, u"Teléfono"_s, u"Fax"_s,
                                                           u"eMail o Código"_s};

namespace {

const QString kTituloClave = u"Clave"_s;
constexpr QChar kSeparador = u';';
constexpr QChar kTildeEnie(0x0303);

QString Cifras(const QString& texto) {
  QString cifras;
  std::copy_if(texto.cbegin(), texto.cend(), std::back_inserter(cifras), [](QChar c) { return c.isDigit(); });
  return cifras;
}

QString NumeroNacional(const QString& texto) {
  constexpr int kLargoNacional = 9;
  const QString cifras = Cifras(texto);
  for (const QString& prefijo : {u"0034"_s, u"34"_s})
    if (cifras.size() == prefijo.size() + kLargoNacional && cifras.startsWith(prefijo))
      return cifras.sliced(prefijo.size());
  return cifras;
}

/// La misma en todos los programas que lean el mismo fichero. `veces`: de los datos ya vistos, por cuál se
/// va; empezar otra vez por la primera sería, con muchos iguales, no acabar.
QString ClaveDerivada(const Contacto& contacto, const QSet<QString>& usadas, QHash<QByteArray, int>& veces) {
  const QByteArray datos = QStringList(contacto.datos.cbegin(), contacto.datos.cend()).join(u'\n').toUtf8();
  for (int& vez = veces[datos];; ++vez) {
    const QByteArray resumen =
        QCryptographicHash::hash(datos + '\n' + QByteArray::number(vez), QCryptographicHash::Sha1);
    const QString clave = u"c-"_s + QString::fromLatin1(resumen.toHex().first(16));
    if (!usadas.contains(clave)) return clave;
  }
}

void PonerClaves(Agenda& agenda) {
  QSet<QString> usadas;
  std::vector<Contacto*> sinClave;
  for (Contacto& contacto : agenda.contactos) {
    if (contacto.clave.isEmpty() || usadas.contains(contacto.clave)) sinClave.push_back(&contacto);
    usadas.insert(contacto.clave);
  }
  QHash<QByteArray, int> veces;
  for (Contacto* contacto : sinClave) {
    contacto->clave = ClaveDerivada(*contacto, usadas, veces);
    usadas.insert(contacto->clave);
  }
}

}  // namespace

Contacto* Agenda::buscar(const QString& clave) {
  const auto hallado = std::find_if(contactos.begin(), contactos.end(),
                                    [&](const Contacto& contacto) { return contacto.clave == clave; });
  return hallado == contactos.end() ? nullptr : &*hallado;
}

QString EnUnaLinea(const QString& texto) {
  return texto.simplified();
}

QString Plegar(const QString& texto) {
  QString plegado;
  for (const QChar c : texto.toCaseFolded().normalized(QString::NormalizationForm_D)) {
    const bool enie = c == kTildeEnie && plegado.endsWith(u'n');
    if (c.category() != QChar::Mark_NonSpacing || enie) plegado += c;
  }
  return plegado.normalized(QString::NormalizationForm_C);
}

QString IdentidadContacto(const Contacto& contacto) {
  const QString& numero =
      contacto.datos[kTelefono].isEmpty() ? contacto.datos[kFax] : contacto.datos[kTelefono];
  return Plegar(EnUnaLinea(contacto.datos[kNombre])) + u'\n' + NumeroNacional(numero);
}

bool Coincide(const Contacto& contacto, const QString& buscado) {
  const QStringList palabras = Plegar(buscado).split(u' ', Qt::SkipEmptyParts);
  if (palabras.isEmpty()) return true;
  QStringList textos;
  for (const QString& dato : contacto.datos)
    textos += Plegar(dato);
  textos << Cifras(contacto.datos[kTelefono]) << Cifras(contacto.datos[kFax]);
  return std::all_of(palabras.cbegin(), palabras.cend(), [&](const QString& palabra) {
    return std::any_of(textos.cbegin(), textos.cend(),
                       [&](const QString& texto) { return texto.contains(palabra); });
  });
}

QString ClaveNueva() {
  return QUuid::createUuid().toString(QUuid::WithoutBraces);
}

std::optional<Agenda> LeerAgenda(const QByteArray& bytes) {
  Agenda agenda;
  const QString texto = comunes::DecodificarTexto(bytes);
  Csv csv = LeerCsv(texto, kSeparador);
  if (csv.filas.empty()) return agenda;
  // Con "," la deja una hoja de cálculo que no está en español.
  if (!csv.filas.front().contains(kTitulosContacto[kNombre])) csv = LeerCsv(texto, u',');
  const QStringList& titulos = csv.filas.front();
  if (csv.comillasSinCerrar || !titulos.contains(kTitulosContacto[kNombre])) return std::nullopt;
  // La posición de cada dato y de la clave en las filas; lo demás se guarda como está.
  std::array<qsizetype, kDatosContacto> donde{};
  for (std::size_t i = 0; i < donde.size(); ++i)
    donde[i] = titulos.indexOf(kTitulosContacto[i]);
  const qsizetype dondeClave = titulos.indexOf(kTituloClave);
  const auto esOtra = [&](qsizetype columna) {
    return columna != dondeClave && std::find(donde.begin(), donde.end(), columna) == donde.end();
  };
  for (qsizetype c = 0; c < titulos.size(); ++c)
    if (esOtra(c)) agenda.otrasColumnas += titulos[c];
  for (std::size_t f = 1; f < csv.filas.size(); ++f) {
    const QStringList& fila = csv.filas[f];
    Contacto contacto;
    for (std::size_t i = 0; i < donde.size(); ++i)
      contacto.datos[i] = EnUnaLinea(fila.value(donde[i]));
    contacto.clave = fila.value(dondeClave).trimmed();
    for (qsizetype c = 0; c < fila.size(); ++c)
      if (esOtra(c)) contacto.otros += fila[c];
    agenda.contactos.push_back(std::move(contacto));
  }
  PonerClaves(agenda);
  return agenda;
}

QByteArray EscribirAgenda(const Agenda& agenda) {
  QString texto(QChar::ByteOrderMark);
  QStringList fila(kTitulosContacto.cbegin(), kTitulosContacto.cend());
  EscribirFilaCsv(texto, (fila << kTituloClave) + agenda.otrasColumnas, kSeparador);
  for (const Contacto& contacto : agenda.contactos) {
    fila = QStringList(contacto.datos.cbegin(), contacto.datos.cend());
    EscribirFilaCsv(texto, (fila << contacto.clave) + contacto.otros, kSeparador);
  }
  return texto.toUtf8();
}

FinCambio Aplicar(Agenda& agenda, const CambioContacto& cambio) {
  if (!cambio.antes) {
    agenda.contactos.push_back(*cambio.despues);
    return FinCambio::Hecho;
  }
  const Contacto& antes = *cambio.antes;
  Contacto* actual = agenda.buscar(antes.clave);
  if (!cambio.despues) {
    if (!actual) return FinCambio::Hecho;
    if (actual->datos != antes.datos) return FinCambio::NoQuitado;
    agenda.contactos.erase(agenda.contactos.begin() + (actual - agenda.contactos.data()));
    return FinCambio::Hecho;
  }
  const Contacto& despues = *cambio.despues;
  if (!actual) {
    agenda.contactos.push_back(despues);
    return FinCambio::Recuperado;
  }
  auto mezcla = actual->datos;
  for (std::size_t i = 0; i < mezcla.size(); ++i) {
    if (despues.datos[i] == antes.datos[i]) continue;
    if (actual->datos[i] != antes.datos[i] && actual->datos[i] != despues.datos[i]) {
      agenda.contactos.push_back(despues);
      agenda.contactos.back().clave = ClaveNueva();
      return FinCambio::Conservados;
    }
    mezcla[i] = despues.datos[i];
  }
  const bool mezclado = mezcla != despues.datos;
  actual->datos = mezcla;
  return mezclado ? FinCambio::Mezclado : FinCambio::Hecho;
}

}  // namespace herramientas
