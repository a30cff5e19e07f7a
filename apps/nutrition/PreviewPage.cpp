// The page of `nutrition preview`: a phone's frame (390 x 844 points) with a status bar, the
// screen the server renders inside it, and beside it the presentation graph. The script asks
// for the screen with a long poll (the server answers when the look changes, or after a
// second), sends taps on elements with data-act="tap", changes of fields and wheels, scrolls
// and horizontal drags over a page controller (swipes), then asks again at once. A redraw
// changes only what changed in the page, so focus, typed text and scroll positions stay.

#include "PreviewCommand.h"

namespace nutrition::cli {

const char* previewPage() {
  return R"html(<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<title>NutritionKit preview</title>
<link rel="stylesheet" href="renderer.css">
<style>
body{margin:0;min-height:100vh;background:#e5e5ea;display:flex;align-items:flex-start;
  justify-content:center;gap:32px;padding:24px;box-sizing:border-box;
  font-family:-apple-system,"SF Pro Text","Helvetica Neue","DejaVu Sans",Arial,sans-serif}
#phone{position:relative;width:390px;height:844px;border-radius:48px;overflow:hidden;
  background:#fff;box-shadow:0 0 0 10px #1c1c1e,0 12px 40px rgba(0,0,0,.35);flex:none}
#screen{position:absolute;left:0;top:0;width:390px;height:844px;user-select:none}
#status{position:absolute;left:0;top:0;width:390px;height:47px;z-index:10;pointer-events:none;
  display:flex;align-items:center;justify-content:space-between;padding:6px 32px 0;
  box-sizing:border-box;font-size:16px;font-weight:600;color:#000}
#panel{max-width:360px;font-size:13px;color:#3c3c43}
#panel h1{font-size:20px;margin:0 0 8px;color:#000}
#graph{font-family:monospace;white-space:pre-wrap;background:#fff;padding:8px;border-radius:8px}
</style>
</head>
<body>
<div id="phone"><div id="screen"></div><div id="status"><span>9:41</span><span>&#9679;&#9679;&#9679;</span></div></div>
<div id="panel"><h1>NutritionKit preview</h1>
<p>The module's screens, live. Taps, typing and wheel choices go to the module; timers run.</p>
<p>Screens shown:</p><div id="graph"></div></div>
<script>
"use strict";
const screen = document.getElementById("screen");
const graph = document.getElementById("graph");
let generation = -1;

// Brings the children of `from` to those of `to`, keeping every element whose place and tag
// stay: what the member holds (focus, a typed text, a scroll position, an element a click is
// on its way to) survives a redraw, and images are not loaded again.
function morphChildren(from, to) {
  const had = [...from.childNodes];
  const wanted = [...to.childNodes];
  wanted.forEach((node, at) => {
    const old = had[at];
    if (!old) {
      from.appendChild(node);
    } else if (old.nodeType !== node.nodeType || old.nodeName !== node.nodeName) {
      from.replaceChild(node, old);
    } else if (old.nodeType === Node.ELEMENT_NODE) {
      morph(old, node);
    } else if (old.nodeValue !== node.nodeValue) {
      old.nodeValue = node.nodeValue;
    }
  });
  for (let at = wanted.length; at < had.length; at++) from.removeChild(had[at]);
}

function morph(from, to) {
  const offset = from.getAttribute("data-x") + "," + from.getAttribute("data-y");
  for (const attribute of [...from.attributes]) {
    if (!to.hasAttribute(attribute.name)) from.removeAttribute(attribute.name);
  }
  for (const attribute of [...to.attributes]) {
    if (from.getAttribute(attribute.name) !== attribute.value) {
      from.setAttribute(attribute.name, attribute.value);
    }
  }
  morphChildren(from, to);
  // The module moved a scroll view (another page in the same place, or its own scroll). The
  // echo of a scroll the page reported, or one the member is still making, moves nothing: an
  // older report arriving after a newer scroll would pull the content back.
  const moved = from.getAttribute("data-x") + "," + from.getAttribute("data-y");
  if (from.placed && offset !== moved && !scrollTimers.has(from) && moved !== from.reported) {
    from.scrollLeft = Number(from.dataset.x);
    from.scrollTop = Number(from.dataset.y);
  }
  if (from === document.activeElement) return;
  if (from.tagName === "INPUT") {
    const value = to.getAttribute("value") || "";
    if (from.value !== value) from.value = value;
  } else if (from.tagName === "SELECT") {
    const chosen = from.querySelector("option[selected]");
    from.value = chosen ? chosen.value : "";
  }
}

function show(frame) {
  if (frame.html === undefined || frame.gen === generation) return;
  const next = document.createElement("div");
  next.innerHTML = frame.html;
  morphChildren(screen, next);
  generation = frame.gen;
  graph.textContent = frame.graph;
  // A scroll view seen for the first time starts at the offset the module gave it.
  screen.querySelectorAll(".sv").forEach((element) => {
    if (element.placed) return;
    element.placed = true;
    element.scrollLeft = Number(element.dataset.x);
    element.scrollTop = Number(element.dataset.y);
  });
  document.body.dataset.generation = String(generation);
}

async function frame(wait) {
  const response = await fetch("frame?gen=" + generation + (wait ? "&wait=1" : ""),
                               {cache: "no-store"});
  if (!response.ok) throw new Error("frame " + response.status);
  show(await response.json());
}

// Ids number the elements of one rendering: an action names the rendering its element came
// from, which may be older than the page by the time the action goes out.
async function send(id, value, gen) {
  const query = new URLSearchParams({gen: String(gen), id: id, value: value});
  const response = await fetch("action?" + query.toString(), {method: "POST"});
  // An action on a look the module has already left (its view replaced) is refused; the
  // count lets a test tell a refused tap from a slow one.
  const answer = response.ok ? await response.json() : {ok: false};
  if (!answer.ok) document.body.dataset.refused = String(Number(document.body.dataset.refused || 0) + 1);
  await frame(false);
}

// A horizontal drag over a page controller turns its page, as a swipe does on a phone.
let drag = null;
let swiped = false;
screen.addEventListener("pointerdown", (event) => {
  const area = event.target.closest("[data-swipe]");
  drag = area ? {id: area.dataset.swipe, gen: generation, x: event.clientX, y: event.clientY}
              : null;
  swiped = false;
});
screen.addEventListener("pointerup", (event) => {
  if (!drag) return;
  const dx = event.clientX - drag.x;
  const dy = event.clientY - drag.y;
  if (Math.abs(dx) > 40 && Math.abs(dx) > 2 * Math.abs(dy)) {
    swiped = true;
    send(drag.id, dx < 0 ? "forward" : "reverse", drag.gen);
  }
  drag = null;
});

screen.addEventListener("click", (event) => {
  if (swiped) {
    swiped = false;
    event.preventDefault();
    return;
  }
  const target = event.target.closest("[data-act=\"tap\"]");
  if (!target || !screen.contains(target)) return;
  event.preventDefault();
  send(target.id, "", generation);
});

screen.addEventListener("change", (event) => {
  const target = event.target;
  if (target.dataset.act === "input") send(target.id, target.value, generation);
});

// A scroll is reported once it rests, for the element and rendering it began in: a redraw in
// between may have given the element another id and another role.
const scrollTimers = new WeakMap();
screen.addEventListener("scroll", (event) => {
  const target = event.target;
  if (!(target instanceof HTMLElement) || target.dataset.act !== "scroll") return;
  const id = target.id;
  const gen = generation;
  clearTimeout(scrollTimers.get(target));
  scrollTimers.set(target, setTimeout(() => {
    scrollTimers.delete(target);
    target.reported = Math.round(target.scrollLeft) + "," + Math.round(target.scrollTop);
    send(id, target.reported, gen);
  }, 150));
}, true);

async function follow() {
  for (;;) {
    try {
      await frame(true);
    } catch (error) {
      await new Promise((resolve) => setTimeout(resolve, 1000));
    }
  }
}
follow();
</script>
</body>
</html>
)html";
}

}  // namespace nutrition::cli
