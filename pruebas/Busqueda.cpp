#include "remesa/Busqueda.h"

#include <gtest/gtest.h>

#include <map>

#include "RemesasAlAzar.h"

using remesa::Busqueda;

namespace {

// Buscar a la vista: carácter a carácter y campo a campo, con lo que se junta y las posiciones escritos aquí.

char Llano(char c) {
  static const std::map<char, std::string_view> kJuntos{
      {'a', "\xC0\xC1\xC2\xC3\xC4\xC5\xC6\xE0\xE1\xE2\xE3\xE4\xE5\xE6\xAA"},
      {'c', "\xC7\xE7"},
      {'e', "\xC8\xC9\xCA\xCB\xE8\xE9\xEA\xEB"},
      {'i', "\xCC\xCD\xCE\xCF\xEC\xED\xEE\xEF"},
      {'n', "\xD1\xF1"},
      {'o', "\xD2\xD3\xD4\xD5\xD6\xD8\xF2\xF3\xF4\xF5\xF6\xF8\x8C\x9C\xBA\xB0"},
      {'u', "\xD9\xDA\xDB\xDC\xF9\xFA\xFB\xFC"},
      {'\'', "\x91\x92\xB4"},
      {' ', "\xA0"}};
  for (const auto& [llano, caracteres] : kJuntos)
    if (caracteres.find(c) != std::string_view::npos) return llano;
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

std::string Llano(std::string_view texto, bool conBlancos = true) {
  std::string llano;
  for (const char c : texto)
    if (conBlancos || c != ' ') llano += Llano(c);
  return llano;
}

bool Esta(const std::string& registro, const std::string& texto) {
  static const std::map<std::string, std::vector<std::pair<remesa::Posiciones, bool>>> kCampos{
      {"01", {{{11, 45}, false}, {{46, 115}, false}, {{124, 158}, false}}},
      {"02",
       {{{11, 45}, false},
        {{54, 123}, false},
        {{124, 173}, false},
        {{174, 223}, false},
        {{224, 263}, false},
        {{266, 299}, true}}},
      {"003",
       {{{11, 45}, false},
        {{46, 80}, false},
        {{108, 118}, false},
        {{119, 188}, false},
        {{189, 238}, false},
        {{239, 288}, false},
        {{289, 328}, false},
        {{332, 367}, false},
        {{368, 402}, false},
        {{404, 437}, true},
        {{442, 581}, false}}},
      {"004",
       {{{11, 45}, false},
        {{46, 80}, false},
        {{81, 150}, false},
        {{152, 187}, false},
        {{188, 222}, false},
        {{223, 292}, false},
        {{294, 329}, false},
        {{330, 364}, false}}},
      {"006",
       {{{11, 45}, false},
        {{46, 80}, false},
        {{81, 115}, false},
        {{116, 185}, false},
        {{186, 220}, false},
        {{221, 254}, true},
        {{255, 259}, false}}},
      {"09", {{{1, 600}, false}}}};
  const std::string codigo = registro.substr(0, 2);
  for (const auto& [donde, cuenta] : kCampos.at(codigo == "03" ? registro.substr(7, 3) : codigo)) {
    const std::string_view campo = remesa::LeerCampo(registro, donde);
    if (Llano(campo).find(Llano(texto)) != std::string::npos) return true;
    if (cuenta && Llano(campo, false).find(Llano(texto, false)) != std::string::npos) return true;
  }
  return false;
}

}  // namespace

TEST(Busqueda, EncuentraLoMismoQueMirandoCampoACampo) {
  pruebas::Remesas azar(7, false);
  std::size_t hallados = 0, miradas = 0;
  for (int vuelta = 0; vuelta < 12; ++vuelta) {
    std::vector<std::string> registros = azar.remesa();
    registros.push_back(pruebas::Registro("09x", {{{300, 600}, "Qu\xE9 ser\xE1 9 8"}}));
    for (std::string& r : registros) {
      for (char& c : r)
        if (azar.unaDe(40) && c >= 'A') c = "\xC1\xD1\xF3\xFC\xE7\x80\xBF\x92"[azar.hasta(8)];
      if (azar.unaDe(3)) remesa::EscribirCampo(r, {404, 437}, "ES91 2100 0418 45 0200051332");
      if (azar.unaDe(8)) r.resize(400 + azar.hasta(200));
    }
    for (int n = 0; n < 60; ++n) {
      // Un trozo de un registro, cambiado, o un resto cualquiera.
      const std::string& de = registros[azar.hasta(registros.size())];
      const std::size_t desde = 10 + azar.hasta(de.size() - 10);
      std::string texto = de.substr(desde, 1 + azar.hasta(azar.unaDe(2) ? 4 : 24));
      if (azar.unaDe(2)) texto = Llano(texto);
      if (azar.unaDe(4)) texto.insert(azar.hasta(texto.size() + 1), " ");
      if (azar.unaDe(4)) std::erase(texto, ' ');
      texto = std::string(remesa::Recortar(Llano(texto) == texto || azar.unaDe(2) ? texto : Llano(texto)));
      if (remesa::Recortar(Llano(texto)).size() != texto.size() || texto.empty()) continue;
      const Busqueda busqueda(texto);
      for (const std::string& r : registros) {
        const auto donde = busqueda.en(r);
        ASSERT_EQ(donde.has_value(), Esta(r, texto)) << '[' << texto << "]\n[" << r << ']';
        ++miradas;
        if (!donde) continue;
        ++hallados;
        ASSERT_EQ(Llano(remesa::LeerCampo(r, *donde), false), Llano(texto, false));
      }
    }
  }
  EXPECT_GT(hallados, miradas / 100);
  EXPECT_LT(hallados, miradas / 2);
}

TEST(Busqueda, LosImportesSonLosDeLosAdeudosYLosTotales) {
  const auto adeudo = [](std::string_view importe) { return pruebas::Adeudo("R", importe); };
  const std::string total = pruebas::Registro("04", {{{46, 62}, "00000000000005210"}});
  struct {
    std::string registro;
    bool esta;
  } const casos[] = {{adeudo("00000005210"), true},
                     {adeudo("       5210"), true},
                     {adeudo("5210       "), true},
                     {adeudo("00000052100"), false},
                     {adeudo("10000005210"), false},
                     {adeudo(""), false},
                     {total, true},
                     {pruebas::Opcional("005", ""), false}};
  const Busqueda busqueda("52,10", 5210);
  for (const auto& [registro, esta] : casos)
    EXPECT_EQ(busqueda.en(registro).has_value(), esta) << registro;
  EXPECT_EQ(busqueda.en(total), (remesa::Posiciones{46, 62}));
  EXPECT_FALSE(Busqueda("  \xA0", 5210).en(total)) << "un texto vacío no está en ningún sitio";
}
