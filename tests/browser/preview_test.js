#!/usr/bin/env node
// Drives `nutrition preview` in headless Chromium through a new member's main path: the
// invitation to the questionnaire, the questionnaire to "Enviar", the waiting screens, the
// weekly menu, a later day of the strip, an intake and its recipe pages, an alternative dish,
// a favourite, back home, the fasting card, the fasting screen ticking and "Terminar ayuno".
// Each step checks what the member sees and saves a screenshot of the phone; any error in the
// browser's console, any failed request and any image that does not load fails the run.
//
//   node preview_test.js NUTRITION SCREENSHOT_DIR
//
// CHROMIUM names the browser (else chromium or chromium-browser on the PATH).
// NUTRITION_SCREENSHOTS_DOCS=DIR also copies the README's screenshots into DIR.
// Exit code 0 when every step passed, 1 on a failure, 77 when puppeteer-core is missing.
"use strict";

const {spawn, execFileSync} = require("child_process");
const fs = require("fs");
const os = require("os");
const path = require("path");

let puppeteer;
try {
  puppeteer = require("puppeteer-core");
} catch (error) {
  console.error("preview_test: puppeteer-core is missing; run tools/install-browser-deps.sh");
  process.exit(77);
}

const [nutrition, shotDir] = process.argv.slice(2);
if (!nutrition || !shotDir) {
  console.error("usage: node preview_test.js NUTRITION SCREENSHOT_DIR");
  process.exit(2);
}
const docsDir = process.env.NUTRITION_SCREENSHOTS_DOCS;
// The README shows these steps.
const docsShots = new Map([
  ["01-unregistered-alert", "invitation"],
  ["02-questionnaire-page-1", "questionnaire"],
  ["07-weekly-menu", "weekly-menu"],
  ["10-recipe-page-2", "recipe"],
  ["15-fasting-screen", "fasting"],
]);

function findChromium() {
  if (process.env.CHROMIUM) return process.env.CHROMIUM;
  for (const name of ["chromium", "chromium-browser"]) {
    try {
      return execFileSync("sh", ["-c", "command -v " + name]).toString().trim();
    } catch (error) {
      // not this one
    }
  }
  throw new Error("no chromium on the PATH (tools/install-browser-deps.sh installs it)");
}

const sleep = (ms) => new Promise((resolve) => setTimeout(resolve, ms));

// Starts the preview on an ephemeral port with its own data directory and a pinned clock.
async function startPreview(work) {
  const child = spawn(nutrition, ["preview", "--main-color", "EA6E29"], {
    env: {
      ...process.env,
      XDG_DATA_HOME: path.join(work, "data"),
      NUTRITIONKIT_NOW: "2026-11-21T12:00:00Z",
      TZ: "UTC",
      LC_ALL: "es_ES.UTF-8",
    },
    stdio: ["ignore", "pipe", "pipe"],
  });
  let output = "";
  child.stdout.on("data", (chunk) => (output += chunk));
  child.stderr.on("data", (chunk) => (output += chunk));
  const exited = new Promise((resolve) => child.on("exit", (code, signal) => resolve({code, signal})));
  for (let waited = 0; waited < 60000; waited += 100) {
    const found = output.match(/^(http:\/\/127\.0\.0\.1:\d+\/)$/m);
    if (found) return {child, url: found[1], exited, log: () => output};
    if (child.exitCode !== null) break;
    await sleep(100);
  }
  child.kill("SIGKILL");
  throw new Error("the preview did not print its address:\n" + output);
}

async function main() {
  const started = Date.now();
  fs.mkdirSync(shotDir, {recursive: true});
  if (docsDir) fs.mkdirSync(docsDir, {recursive: true});
  const work = fs.mkdtempSync(path.join(os.tmpdir(), "nutrition-preview-"));
  const preview = await startPreview(work);
  const browser = await puppeteer.launch({
    executablePath: findChromium(),
    headless: true,
    args: ["--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--lang=es-ES",
           "--font-render-hinting=none"],
  });
  const problems = [];
  let watching = true;
  let failed = false;
  try {
    const page = await browser.newPage();
    await page.setViewport({width: 860, height: 900, deviceScaleFactor: 1});
    page.on("console", (message) => {
      if (watching && message.type() === "error") problems.push("console: " + message.text());
    });
    page.on("pageerror", (error) => watching && problems.push("page error: " + error.message));
    page.on("requestfailed", (request) => {
      if (watching) problems.push("request failed: " + request.url() + " " +
                                  (request.failure() ? request.failure().errorText : ""));
    });
    page.on("response", (response) => {
      if (watching && response.status() >= 400) {
        problems.push("HTTP " + response.status() + ": " + response.url());
      }
    });
    await page.goto(preview.url, {waitUntil: "load"});

    // What the member sees: the top layer's screen, its text, the screens shown.
    const state = () => page.evaluate(() => {
      const layers = [...document.querySelectorAll("#screen > .layer:not(.covered)")];
      const top = layers[layers.length - 1];
      return {
        screen: top ? top.dataset.screen : "",
        text: top ? top.innerText : "",
        graph: document.getElementById("graph").textContent,
      };
    });

    let stepStarted = Date.now();
    let shown = 0;
    const timings = [];
    async function waitFor(description, predicate, timeout = 15000) {
      const deadline = Date.now() + timeout;
      let last;
      for (;;) {
        last = await state();
        if (await predicate(last)) return last;
        if (Date.now() > deadline) {
          throw new Error("timed out waiting for " + description + "\n  screens: " + last.graph +
                          "\n  top screen: " + last.screen + "\n  text: " +
                          last.text.replace(/\s+/g, " ").slice(0, 600));
        }
        await sleep(150);
      }
    }

    // The element ids of the top layer matching `selector`, shallowest first.
    async function ids(selector, text) {
      return page.evaluate((selector, text) => {
        const layers = [...document.querySelectorAll("#screen > .layer:not(.covered)")];
        const top = layers[layers.length - 1];
        const depth = (element) => {
          let n = 0;
          for (let at = element; at && at !== top; at = at.parentElement) n++;
          return n;
        };
        return [...top.querySelectorAll(selector)]
            .filter((element) => element.id)
            .filter((element) => text === undefined ||
                                 element.innerText.trim().replace(/\s+/g, " ") === text)
            .sort((a, b) => depth(a) - depth(b))
            .map((element) => element.id);
      }, selector, text);
    }

    // A member's tap on the element `id`, scrolled to the middle of its scroll view first so
    // that nothing over the scroll view's edges (a bar of buttons) takes the tap.
    async function click(id) {
      await page.$eval("#" + id, (element) => {
        const scroller = element.parentElement && element.parentElement.closest(".sv");
        if (!scroller) return;
        const box = element.getBoundingClientRect();
        const frame = scroller.getBoundingClientRect();
        scroller.scrollTop += (box.top + box.height / 2) - (frame.top + frame.height / 2);
      });
      await sleep(50);
      await page.click("#" + id);
    }

    async function tap(selector, text) {
      const found = await ids(selector, text);
      if (found.length === 0) {
        const now = await state();
        throw new Error("nothing to tap for " + selector + (text ? " '" + text + "'" : "") +
                        " on " + now.screen + ": " + now.text.replace(/\s+/g, " ").slice(0, 400));
      }
      await click(found[0]);
    }

    // The id of the last element matching `selector` in the question titled `title` (with the
    // text `text` when given), found in one look at the page: a redraw replaces elements, ids
    // stay. Answers that come from the backend may take a moment to appear.
    async function inQuestion(title, selector, text) {
      const deadline = Date.now() + 15000;
      for (;;) {
        const found = await page.evaluate((title, selector, text) => {
          const layers = [...document.querySelectorAll("#screen > .layer:not(.covered)")];
          const top = layers[layers.length - 1];
          for (const view of top.querySelectorAll("[data-kind=HealthQuestionView]")) {
            const label = view.querySelector("[data-name=questiontTitle]");
            if (!label || label.innerText.trim() !== title) continue;
            return [...view.querySelectorAll(selector)]
                .filter((element) => element.id)
                .filter((element) => text === undefined || element.innerText.trim() === text)
                .map((element) => element.id);
          }
          return null;
        }, title, selector, text);
        if (found !== null && found.length > 0) return found[found.length - 1];
        if (Date.now() > deadline) {
          throw new Error(found === null ? "no question '" + title + "' on screen"
                                         : "'" + title + "' has no " + selector +
                                               (text ? " '" + text + "'" : ""));
        }
        await sleep(150);
      }
    }

    const generation = () => page.evaluate(() => Number(document.body.dataset.generation || -1));
    const nextLook = async (before) => page.waitForFunction(
        (before) => Number(document.body.dataset.generation) > before, {timeout: 5000}, before);

    // Taps an answer and waits for the page to draw it. A tap on a look the module had just
    // left is refused (the question rebuilt its buttons): the member taps again on the new one.
    async function answerTap(title, answer) {
      for (let attempt = 1; ; attempt++) {
        const before = await page.evaluate(() => ({
          gen: Number(document.body.dataset.generation || -1),
          refused: Number(document.body.dataset.refused || 0),
        }));
        await click(await inQuestion(title, "[data-act=tap]", answer));
        let refused = false;
        try {
          refused = await (await page.waitForFunction((before) => {
            if (Number(document.body.dataset.refused || 0) > before.refused) return "refused";
            return Number(document.body.dataset.generation) > before.gen ? "drawn" : false;
          }, {timeout: 10000}, before)).jsonValue() === "refused";
        } catch (error) {
          throw new Error("no redraw after tapping '" + answer + "' for '" + title + "'");
        }
        if (!refused) return;
        if (attempt === 3) throw new Error("'" + answer + "' for '" + title + "' refused");
        await nextLook(before.gen);
      }
    }

    async function answerPicker(title, answer) {
      const select = "#" + (await inQuestion(title, "select"));
      const value = await page.$eval(select, (element, answer) => {
        const option = [...element.options].find((o) => o.textContent === answer);
        return option ? option.value : null;
      }, answer);
      if (value === null) throw new Error("'" + title + "' offers no '" + answer + "'");
      await page.select(select, value);
      await waitFor("'" + answer + "' chosen for '" + title + "'", async () =>
        page.$eval("#" + (await inQuestion(title, "select")), (element, answer) =>
          !!element.selectedOptions[0] && element.selectedOptions[0].textContent === answer,
        answer));
    }

    async function answerDate(title, isoDay) {
      // The date wheel's input: a member picks the day in the browser's date picker.
      await page.$eval("#" + (await inQuestion(title, "input[type=date]")), (element, value) => {
        element.value = value;
        element.dispatchEvent(new Event("change", {bubbles: true}));
      }, isoDay);
      await waitFor("the date of '" + title + "'", async () =>
        page.$eval("#" + (await inQuestion(title, "input[type=date]")),
                   (element, value) => element.getAttribute("value") === value, isoDay));
    }

    async function answerText(title, text) {
      await click(await inQuestion(title, "input[type=text]"));
      await page.keyboard.type(text);
      await page.keyboard.press("Enter");
      await waitFor("'" + text + "' typed for '" + title + "'", async () =>
        page.$eval("#" + (await inQuestion(title, "input[type=text]")),
                   (element, text) => element.getAttribute("value") === text, text));
    }

    async function brokenImages() {
      return page.evaluate(() => [...document.querySelectorAll("#screen img")]
          .filter((image) => image.complete && image.naturalWidth === 0)
          .map((image) => image.getAttribute("src").slice(0, 80)));
    }

    async function step(name, check) {
      await check();
      // Every image on screen has arrived and decoded.
      await page.waitForFunction(() => [...document.querySelectorAll("#screen img")]
          .every((image) => image.complete), {timeout: 10000});
      const broken = await brokenImages();
      if (broken.length) throw new Error(name + ": images not shown: " + broken.join(", "));
      if (problems.length) throw new Error(name + ": " + problems.join("\n"));
      const file = path.join(shotDir, name + ".png");
      await (await page.$("#phone")).screenshot({path: file});
      if (docsDir && docsShots.has(name)) {
        fs.copyFileSync(file, path.join(docsDir, docsShots.get(name) + ".png"));
      }
      const took = Date.now() - stepStarted;
      timings.push(name + " " + (took / 1000).toFixed(1) + " s");
      console.log("ok " + (++shown) + " " + name + " (" + (took / 1000).toFixed(1) + " s)");
      stepStarted = Date.now();
    }

    const isScreen = (kind) => (now) => now.screen === kind;
    const textOf = async (selector) => page.evaluate((selector) => {
      const layers = [...document.querySelectorAll("#screen > .layer:not(.covered)")];
      const element = layers[layers.length - 1].querySelector(selector);
      return element ? element.innerText.trim() : null;
    }, selector);

    // The dish photos on the cards of the home.
    const photos = () => page.evaluate(() => [...document.querySelectorAll(
        "[data-kind=RecetaCell] img")].map((image) => image.getAttribute("src")).join(" "));

    // 1. A member the backend does not know is invited to the questionnaire.
    await step("01-unregistered-alert", async () => {
      const now = await waitFor("the invitation", isScreen("HealthAlertViewController"));
      for (const text of ["Aviso", "completar la evaluación corporal", "COMPLETAR EVALUACIÓN CORPORAL"]) {
        if (!now.text.includes(text)) throw new Error("the invitation lacks '" + text + "'");
      }
      if (now.graph !== "HostScreen > HealthAlertViewController") throw new Error(now.graph);
    });

    // 2. Its button opens the questionnaire; each page is answered as a member would.
    await tap("[data-name=continueButton]");
    await step("02-questionnaire-page-1", async () => {
      await waitFor("the first page", (now) => now.text.includes("¿Cuál es tu sexo?"));
      await answerTap("¿Cuál es tu sexo?", "Mujer");
      await answerDate("¿Cuál es tu fecha de nacimiento?", "1985-04-12");
      await answerText("¿Cuánto mides?", "172");
      await answerPicker("¿Cuál es tu nivel de actividad física?", "Ligera");
      await answerTap("¿Cuál es tu objetivo?", "Perder peso");
      await answerTap("¿Dónde vives?", "España");
    });
    await tap("[data-name=nextButton]", "Siguiente");
    await step("03-questionnaire-page-2", async () => {
      await waitFor("the second page",
                    (now) => now.text.includes("¿Sigues alguna dieta o tienes alguna alergia?"));
      await answerTap("¿Sigues alguna dieta o tienes alguna alergia?", "Marisco");
      await answerTap("¿Tienes alguna intolerancia alimentaria?", "No");
      await answerTap("¿Hay algún alimento que no quieras comer?", "Cerdo");
    });
    await tap("[data-name=nextButton]", "Siguiente");
    await step("04-questionnaire-page-3", async () => {
      await waitFor("the last page", (now) => now.text.includes("¿Cuántas comidas haces al día?"));
      await answerPicker("¿Cuántas comidas haces al día?", "Cinco comidas");
      await answerTap("¿Qué platos quieres en la comida?", "Primer plato");
      await answerTap("¿Qué platos quieres en la comida?", "Segundo plato");
      await answerTap("¿Qué platos quieres en la cena?", "Segundo plato");
      await answerTap("¿Cómo de elaboradas quieres las recetas?", "Fácil");
      await answerPicker("¿Quieres hacer ayuno intermitente?", "16/8");
      if ((await textOf("[data-name=nextButton]")) !== "Enviar") throw new Error("no 'Enviar'");
    });

    // 3. "Enviar" asks for confirmation; confirming sends the profile.
    await tap("[data-name=nextButton]", "Enviar");
    await step("05-confirmation", async () => {
      const now = await waitFor("the confirmation", isScreen("HealthAlertViewController"));
      if (!now.text.includes("GENERAR NUEVO MENÚ")) throw new Error("no 'GENERAR NUEVO MENÚ'");
    });
    await tap("[data-name=continueButton]");

    // 4. The waiting screens run while the backend builds the menu, then hand over to it.
    await step("06-waiting-screen", async () => {
      await waitFor("the waiting screen", isScreen("WaitingScreenViewController"), 30000);
    });
    await waitFor("the weekly menu", async (now) => {
      if (now.screen === "CustomNavViewController" &&
          (await ids("[data-kind=RecetaCell]")).length > 0) {
        return true;
      }
      if (now.screen === "WaitingScreenViewController" && now.text.includes("Ver menú")) {
        // The screen may have moved on since that look (an earlier tap arriving late).
        const button = await ids("[data-name=button]", "Ver menú");
        if (button.length > 0) await click(button[0]);
      }
      return false;
    }, 60000);

    // 5. The weekly menu: seven days from today, the fasting card, the day's intakes.
    let todayCards = "";
    await step("07-weekly-menu", async () => {
      const now = await state();
      if (!now.graph.includes("CustomNavViewController[NutricionHomeViewController]")) {
        throw new Error("the home is not shown: " + now.graph);
      }
      if ((await ids("[data-kind=NutricionDayView]")).length !== 7) throw new Error("no 7 days");
      if ((await ids(".cell[data-kind^=Ayuno]")).length !== 1) throw new Error("no fasting card");
      if (!/\d+ kcal/i.test(now.text)) throw new Error("no kcal on the cards");
      await waitFor("the dish photos", async () => {
        const shown = await photos();
        return shown.includes("photo/") && !shown.includes("placeholder");
      });
      todayCards = await photos();
    });

    // 6. A later day of the strip: it is selected and its intakes are shown.
    const days = await ids("[data-kind=NutricionDayView]");
    await click(days[2]);
    await step("08-third-day", async () => {
      // Each day has its own dishes: the cards show other photos.
      await waitFor("the third day's intakes", async () => (await photos()) !== todayCards);
      const colours = await page.evaluate(() => [...document.querySelectorAll(
          "[data-kind=NutricionDayView] > [data-name=contentView]")]
          .map((element) => getComputedStyle(element).backgroundColor));
      if (colours[2] === colours[0] || colours[2] === colours[1]) {
        throw new Error("the tapped day does not look selected: " + colours.join(" "));
      }
    });

    // 7. An intake of several dishes: its first recipe page, then the next one by a swipe.
    const cards = await page.evaluate(() => [...document.querySelectorAll(
        "[data-kind=RecetaCell]")].filter((card) => /\d+ platos/.test(card.innerText))
        .map((card) => card.id));
    if (cards.length === 0) throw new Error("no intake of several dishes on the third day");
    await click(cards[0]);
    let firstDish = "";
    await step("09-intake", async () => {
      await waitFor("the intake screen", isScreen("IntakeViewController"));
      await waitFor("the recipe", async () => !!(await textOf("[data-name=nameLabel]")));
      firstDish = await textOf("[data-name=nameLabel]");
      const now = await state();
      if (!/\d+ kcal/i.test(now.text)) throw new Error("no kcal on the recipe");
    });
    let secondDish = "";
    await step("10-recipe-page-2", async () => {
      const area = await page.$("[data-swipe]");
      const box = await area.boundingBox();
      const y = box.y + box.height * 0.7;
      await page.mouse.move(box.x + box.width - 40, y);
      await page.mouse.down();
      await page.mouse.move(box.x + 60, y, {steps: 8});
      await page.mouse.up();
      await waitFor("the next recipe page", async () =>
        (await textOf("[data-name=nameLabel]")) !== firstDish);
      secondDish = await textOf("[data-name=nameLabel]");
    });

    // 8. An alternative to the dish shown, then the dish as a favourite.
    await tap("[data-name=alternativeButton]");
    let alternative = "";
    await step("11-alternative-dish", async () => {
      await waitFor("an alternative dish", async () => {
        const name = await textOf("[data-name=nameLabel]");
        return name && name !== secondDish;
      }, 20000);
      alternative = await textOf("[data-name=nameLabel]");
    });
    await tap("[data-name=favoriteButton]");
    await step("12-favourite", async () => {
      await waitFor("the favourite mark", async () => page.evaluate(() => {
        const layers = [...document.querySelectorAll("#screen > .layer:not(.covered)")];
        const top = layers[layers.length - 1];
        return [...top.querySelectorAll("[data-name=favoriteButton] img")]
            .some((image) => image.getAttribute("src").includes("favorite-on"));
      }), 20000);
    });

    // 9. Back home: the favourites carousel holds the dish.
    await tap("[data-name=closeButton]");
    await step("13-home-with-favourite", async () => {
      await waitFor("the home again", isScreen("CustomNavViewController"));
      await waitFor("the favourite on the home", async () =>
        (await ids("[data-kind=NutritionFavoriteDishCell]")).length > 0 &&
        ((await textOf("[data-name=collectionView]")) || "").includes(alternative), 20000);
    });

    // 10. The fasting card opens the fasting screen, whose timer ticks.
    await tap(".cell[data-kind^=Ayuno]");
    let firstTime = "";
    await step("14-fasting-screen-open", async () => {
      await waitFor("the fasting screen", (now) => now.graph.includes("AyunoViewController"));
      await waitFor("the timer", async () => !!(await textOf("[data-name=timerLabel]")));
      firstTime = await textOf("[data-name=timerLabel]");
      const now = await state();
      if (!now.text.includes("16/8")) throw new Error("the scheme is not 16/8");
    });
    await step("15-fasting-screen", async () => {
      await waitFor("the timer to tick", async () => {
        const time = await textOf("[data-name=timerLabel]");
        return time && time > firstTime;
      }, 10000);
      const arcs = await page.evaluate(() => document.querySelectorAll(
          "#screen .layer:last-child svg.arcs path").length);
      if (arcs < 1) throw new Error("the ring has no arcs");
    });

    // 11. "Terminar ayuno" ends the fast and closes the module over the host's screen.
    await tap("[data-name=finishButton]", "Terminar ayuno");
    await step("16-fast-ended", async () => {
      await waitFor("the host's screen", isScreen("HostScreen"));
      const now = await state();
      if (now.graph !== "HostScreen") throw new Error("screens still shown: " + now.graph);
    });

    watching = false;
    console.log("steps: " + timings.join(", "));
  } catch (error) {
    failed = true;
    console.error("FAIL: " + (process.env.DEBUG ? error.stack : error.message));
    if (problems.length) console.error("browser problems:\n  " + problems.join("\n  "));
    console.error("preview output (end):\n" + preview.log().slice(-2500));
    try {
      const pages = await browser.pages();
      if (pages.length) await pages[pages.length - 1].screenshot({path: path.join(shotDir, "failure.png")});
    } catch (ignored) {
      // the screenshot is a courtesy
    }
  } finally {
    watching = false;
    await browser.close();
    preview.child.kill("SIGTERM");
    const end = await preview.exited;
    if (end.code !== 0) {
      failed = true;
      console.error("FAIL: the preview ended with " + JSON.stringify(end) + "\n" + preview.log());
    }
    fs.rmSync(work, {recursive: true, force: true});
  }
  console.log((failed ? "FAILED" : "passed") + " in " + ((Date.now() - started) / 1000).toFixed(1) +
              " s; screenshots in " + shotDir);
  process.exit(failed ? 1 : 0);
}

main().catch((error) => {
  console.error("FAIL: " + error.stack);
  process.exit(1);
});
