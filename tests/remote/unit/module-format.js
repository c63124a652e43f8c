// The page's folder is served as it is and has no package.json to say that its files are modules.
export function load(url, context, next) {
  return next(url, url.includes('/resources/remote/') ? { ...context, format: 'module' } : context);
}
