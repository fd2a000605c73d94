// La agenda sin ventana: su fichero, la importación de clientes y los cambios de varios programas.

#include <gtest/gtest.h>

#include <QSet>

#include "comunes/herramientas/Agenda.h"
#include "comunes/herramientas/Csv.h"
#include "comunes/herramientas/ImportacionClientes.h"

using namespace herramientas;

namespace {

using namespace Qt::StringLiterals;

QString Texto(const Csv& csv) {
  QStringList filas;
  for (const QStringList& fila : csv.filas)
    filas += fila.join(u'|');
  return filas.join(u'#');
}

Contacto Uno(const QString& nombre, const QString& telefono = {}, const QString& fax = {},
             const QString& correo = {}) {
  return {ClaveNueva(), {nombre, telefono, fax, correo}, {}};
}

QString Datos(const Contacto& c) {
  return QStringList(c.datos.cbegin(), c.datos.cend()).join(u'|');
}
QString Datos(const Agenda& agenda) {
  QStringList todos;
  for (const Contacto& contacto : agenda.contactos)
    todos += Datos(contacto);
  return todos.join(u'#');
}

TEST(AgendaSinVentana, LeeYEscribeCsv) {
  const struct {
    const char* texto;
    const char* leido;
    bool sinCerrar = false;
  } casos[] = {
      {"", ""},
      {"a;b\r\nc;d\r\n", "a|b#c|d"},
      {"a;b\nc\rd", "a|b#c#d"},
      {"a;\n;b", "a|#|b"},
      {"a;", "a|"},
      {"\n\r\n;;\n \na", "a"},
      {"\"x;y\";\"di \"\"hola\"\"\"\n", "x;y|di \"hola\""},
      {"\"uno\r\ndos\";z", "uno\r\ndos|z"},
      {"a\"b;\"c\"d;e", "a\"b|cd|e"},
      {"\"\";\"\"\"\"", "|\""},
      {"a;\"b\nc;d", "a|b\nc;d", true},
  };
  for (const auto& caso : casos) {
    const Csv csv = LeerCsv(QString::fromUtf8(caso.texto), u';');
    EXPECT_EQ(Texto(csv), caso.leido) << caso.texto;
    EXPECT_EQ(csv.comillasSinCerrar, caso.sinCerrar) << caso.texto;
    if (caso.sinCerrar) continue;
    QString escrito;
    for (const QStringList& fila : csv.filas)
      EscribirFilaCsv(escrito, fila, u';');
    EXPECT_EQ(LeerCsv(escrito, u';').filas, csv.filas) << caso.texto;
  }
}

TEST(AgendaSinVentana, ReconoceIgualesYBusca) {
  const struct {
    Contacto uno;
    Contacto otro;
    bool iguales;
  } parejas[] = {
      {Uno("José Ñíguez", "600 12 34 56"), Uno("  jose ñiguez ", "+34 600-123-456"), true},
      {Uno("Ana", "0034 911234567"), Uno("ANA", "911234567"), true},
      {Uno("Ana", "", "911234567"), Uno("Ana", "911 234 567", "900"), true},
      {Uno("Ana"), Uno("ána"), true},
      {Uno("Peña", "1"), Uno("Pena", "1"), false},
      {Uno("Ana", "600123456"), Uno("Ana", "600123457"), false},
      {Uno("Ana", "600123456"), Uno("Ana"), false},
      {Uno("Ana", "340"), Uno("Ana", "0"), false},
  };
  for (const auto& [uno, otro, iguales] : parejas)
    EXPECT_EQ(IdentidadContacto(uno) == IdentidadContacto(otro), iguales)
        << Datos(uno).toStdString() << " y " << Datos(otro).toStdString();
  const Contacto contacto = Uno("José Peña", "+34 600 12 34 56", "911", "jp@ejemplo.es");
  for (const char* si : {"", "  ", "jose", "PEÑA jo", "60012", "600 12 pe", "@ejemplo", "911"})
    EXPECT_TRUE(Coincide(contacto, QString::fromUtf8(si))) << si;
  for (const char* no : {"pena", "jose garcia", "601", "ejemplo.com"})
    EXPECT_FALSE(Coincide(contacto, QString::fromUtf8(no))) << no;
}

TEST(AgendaSinVentana, ElFicheroConservaLoQueNoEsSuyo) {
  const QByteArray escrito =
      "\xEF\xBB\xBFNombre;Teléfono;Fax;eMail o Código;Clave;Notas\r\n"
      "Ana;600;;a@b.es;k1;\"dos\r\nlíneas; \"\r\n"
      "Núria \"N\" Ç;;;;k2\r\n";
  const auto agenda = LeerAgenda(escrito);
  ASSERT_TRUE(agenda);
  EXPECT_EQ(Datos(*agenda), "Ana|600||a@b.es#Núria \"N\" Ç|||");
  QByteArray esperado = escrito;
  EXPECT_EQ(EscribirAgenda(*agenda), esperado.replace("Núria \"N\" Ç", "\"Núria \"\"N\"\" Ç\""));
  // Como la dejan otros programas: en Windows-1252, con ",", con las columnas en otro orden y filas copiadas.
  const auto ajena = LeerAgenda(
      "Clave,Tel\xE9"
      "fono,Nombre\nk1,1,Ana\nk1,2,Luis\n,3,  Eva  \xD1u \n,3,Eva \xD1u\n");
  ASSERT_TRUE(ajena);
  EXPECT_EQ(Datos(*ajena), "Ana|1||#Luis|2||#Eva Ñu|3||#Eva Ñu|3||");
  const auto otraVez = LeerAgenda(EscribirAgenda(*ajena));
  QSet<QString> claves;
  for (std::size_t i = 0; i < 4; ++i) {
    EXPECT_EQ(ajena->contactos[i].clave, otraVez->contactos[i].clave);
    claves += ajena->contactos[i].clave;
  }
  EXPECT_EQ(claves.size(), 4);
  EXPECT_TRUE(LeerAgenda("")->contactos.empty());
  for (const char* no : {"una carta", "Nombre;Fax\n\"x;1\n", "nombre\nAna"})
    EXPECT_FALSE(LeerAgenda(no)) << no;
}

TEST(AgendaSinVentana, UnCambioNoPierdeLoDeOtroPrograma) {
  const auto conClave = [](Contacto contacto) {
    contacto.clave = "k";
    return contacto;
  };
  const Contacto visto = conClave(Uno("Ana", "1", "2", "3"));
  const auto contacto = [&](const char* n, const char* t, const char* f, const char* c) {
    return std::optional(conClave(Uno(n, t, f, c)));
  };
  const std::optional<Contacto> nada;
  const struct {
    std::optional<Contacto> ahora;
    std::optional<Contacto> antes;
    std::optional<Contacto> despues;
    FinCambio fin;
    const char* queda;
  } casos[] = {
      {nada, nada, contacto("Eva", "9", "", ""), FinCambio::Hecho, "Eva|9||"},
      {visto, visto, contacto("Ana", "9", "2", "3"), FinCambio::Hecho, "Ana|9|2|3"},
      {contacto("Ana", "1", "2", "8"), visto, contacto("Ana", "9", "2", "3"), FinCambio::Mezclado,
       "Ana|9|2|8"},
      {contacto("Ana", "9", "2", "3"), visto, contacto("Ana", "9", "2", "3"), FinCambio::Hecho, "Ana|9|2|3"},
      {contacto("Ana", "7", "2", "3"), visto, contacto("Ana", "9", "2", "3"), FinCambio::Conservados,
       "Ana|7|2|3#Ana|9|2|3"},
      {nada, visto, contacto("Ana", "9", "2", "3"), FinCambio::Recuperado, "Ana|9|2|3"},
      {visto, visto, nada, FinCambio::Hecho, ""},
      {nada, visto, nada, FinCambio::Hecho, ""},
      {contacto("Ana", "7", "2", "3"), visto, nada, FinCambio::NoQuitado, "Ana|7|2|3"},
  };
  for (const auto& caso : casos) {
    Agenda agenda;
    if (caso.ahora) agenda.contactos.push_back(*caso.ahora);
    EXPECT_EQ(Aplicar(agenda, {caso.antes, caso.despues}), caso.fin) << caso.queda;
    EXPECT_EQ(Datos(agenda), caso.queda);
    EXPECT_TRUE(agenda.contactos.size() < 2 || agenda.contactos[0].clave != agenda.contactos[1].clave);
  }
}

TEST(AgendaSinVentana, ImportaFicherosDeClientes) {
  Agenda agenda;
  agenda.contactos = {Uno("Ana", "600123456")};
  const struct {
    QByteArray bytes;
    const char* clientes;  // nulo: no se puede importar. N nuevo, R repetido, S sin nombre, + sobran datos
  } casos[] = {
      {"Código;Nombre;Teléfono;Fax;eMail\n7;Eva;1;2;e@x.es\n8;Luis;3;;\n", "N Eva|1|2|e@x.es#N Luis|3||8"},
      {"EMAIL,FAX,NOMBRE\r\ne@x.es,2,\"Eva, S.L.\"\r\n", "N Eva, S.L.||2|e@x.es"},
      {"\xEF\xBB\xBF"
       "e-mail;Otra;Nombre;C\xC3\xB3"
       "digo\n;x;\"Eva\nLópez\";7",
       "N Eva López|||7"},
      {"C\xF3"
       "digo;Nombre;Tel\xE9"
       "fono\n1;Nu\xF1o Espa\xD1",
       "N Nuño EspaÑ|||1"},
      {"Nombre;Teléfono\nANA;+34 600 123 456\nEva;1\nEva;1\nEva;2\n;5\nLuis;1;2\nPía;3;\n",
       "R ANA|+34 600 123 456||#N Eva|1||#R Eva|1||#N Eva|2||#S |5||#+ Luis|1||#N Pía|3||"},
      {"Nombre, Fax;Nombre;Fax\nx;Eva;2", "N Eva||2|"},
      {"Nombre\n", ""},
      {"Código;Teléfono\n1;2", nullptr},
      {"Nombre;Fax\n\"Eva;1\nLuis;2", nullptr},
      {"", nullptr},
      {QByteArray("PK\3\4\0\0", 6), nullptr},
  };
  for (const auto& [bytes, clientes] : casos) {
    const ImportacionClientes importacion = LeerClientes(bytes, agenda);
    EXPECT_EQ(importacion.fallo.isEmpty(), clientes != nullptr) << bytes.constData();
    QStringList leidos;
    for (const Cliente& cliente : importacion.clientes)
      leidos += u"NRS+"_s[static_cast<int>(cliente.estado)] + u' ' + Datos(cliente.contacto);
    EXPECT_EQ(leidos.join(u'#').toStdString(), clientes ? clientes : "");
    Agenda dosVeces = agenda;
    EXPECT_EQ(AnadirClientes(dosVeces, importacion), importacion.cuantos(EstadoCliente::Nuevo));
    EXPECT_EQ(AnadirClientes(dosVeces, importacion), 0);
  }
}

}  // namespace
