// What emscripten makes of web/module.
declare module "frigana-page.js" {
  const loadModule: (settings: object) => Promise<unknown>;
  export default loadModule;
}
