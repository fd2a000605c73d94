#include <gtest/gtest.h>

#include <cstdlib>

#include "Carpeta.h"
#include "RemesasAlAzar.h"
#include "iso20022/Exportacion.h"

// Todo lo que se escribe vale para su esquema oficial, que lo dice xmllint.

using namespace pruebas;

namespace {

/// Bytes cualesquiera donde va un texto: lo que salga ha de valer igual.
void Ensuciar(std::string& registro, Azar& azar) {
  constexpr remesa::Posiciones kTextos[] = {{119, 188}, {189, 328}, {332, 402}, {438, 581}, {46, 80}};
  for (const remesa::Posiciones donde : kTextos)
    if (azar.unaDe(3)) {
      std::string texto(static_cast<std::size_t>(donde.longitud()), ' ');
      for (char& c : texto)
        do
          c = static_cast<char>(azar.hasta(256));
        while (c == '\r' || c == '\n');
      remesa::EscribirCampo(registro, donde, texto);
    }
}

}  // namespace

class ValidacionXml : public Carpeta {};

TEST_F(ValidacionXml, TodoLoEscritoValeParaSuEsquema) {
  int escritos = 0;
  for (unsigned semilla = 1; semilla <= 60; ++semilla) {
    Remesas azar(semilla, false);
    std::string bytes;
    for (std::string r : azar.remesa()) {
      if (r.starts_with("0319143003") && azar.unaDe(2)) Ensuciar(r, azar);
      if (r.starts_with("0319143003") && azar.unaDe(5))
        remesa::EscribirCampo(r, {403, 437}, "B21000418450200051332    ");
      if (semilla % 3 == 0 && r[0] == '0' && r[1] <= '3') r.replace(2, 5, "19445");
      bytes += r + "\r\n";
    }
    const auto ruta = escribir("remesa.Q19", bytes);
    for (const auto version : {iso20022::Version::V02, iso20022::Version::V08})
      for (const auto direcciones : {iso20022::Direcciones::Todas, iso20022::Direcciones::Necesarias,
                                     iso20022::Direcciones::Ninguna}) {
        std::vector<std::unique_ptr<iso20022::Fuente>> fuentes;
        fuentes.push_back(std::make_unique<iso20022::FuenteFichero>(ruta));
        iso20022::OpcionesExportacion o;
        o.version = version;
        o.direcciones = direcciones;
        o.omitir = true;
        o.compacto = azar.unaDe(2);
        o.cada = azar.unaDe(3) ? 4 : 0;
        o.bicDe = [](std::string_view entidad) { return entidad == "2100" ? "CAIXESBBXXX" : "MAL"; };
        iso20022::Exportacion exportacion(std::move(fuentes), o);
        if (!exportacion.examinar({})->posible) continue;
        const std::string nombre =
            (version == iso20022::Version::V02 ? "v02-" : "v08-") + std::to_string(++escritos) + ".xml";
        exportacion.escribir(carpeta_ / nombre);
      }
  }
  EXPECT_GT(escritos, 200);
  for (const std::string version : {"02", "08"}) {
    std::string orden = "xmllint --noout --schema '" DIR_DATOS "/xsd/pain.008.001.";
    orden.append(version).append(".xsd' '").append(carpeta_.string()).append("'/v").append(version);
    orden.append("-*.xml >'").append(carpeta_.string()).append("/dicho' 2>&1");
    // Si xmllint no está, tampoco vale: se instala con lo demás de las pruebas. La orden es de la propia
    // prueba.
    ASSERT_EQ(std::system(orden.c_str()), 0)  // NOLINT(cert-env33-c)
        << leer(carpeta_ / "dicho").substr(0, 3000);
  }
}
